#include "paths/MacPath.h"

#include "paths/platform/Bundle_p.h"
#include "paths/platform/UserDirectories_p.h"

std::string MacPath::getAppFullPath()
{
    return platform::bundleExecutablePath();
}

std::string MacPath::getAppDirPath()
{
    const std::string path = getAppFullPath();
    return path.substr(0, path.rfind('/') + 1);
}

std::string MacPath::getAppContentsDirPath()
{
    const std::string path = getAppFullPath();
    const std::size_t last = path.rfind('/');
    if (last == std::string::npos || last == 0)
        return {};
    return path.substr(0, path.rfind('/', last - 1) + 1);
}

std::string MacPath::getUserDirPath()
{
    return platform::applicationSupportDirectory();
}
