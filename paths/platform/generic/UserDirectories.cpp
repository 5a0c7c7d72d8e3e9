#include "paths/platform/UserDirectories_p.h"

#include <cstdlib>
#include <string>

namespace platform {

namespace {

std::string absolutePathFromEnvironment(const char *name)
{
    const char *value = std::getenv(name);
    std::string path = value && value[0] == '/' ? value : "";
    while (!path.empty() && path.back() == '/')
        path.pop_back();
    return path;
}

} // namespace

std::string applicationSupportDirectory()
{
    if (std::string data = absolutePathFromEnvironment("XDG_DATA_HOME"); !data.empty())
        return data;
    std::string home = absolutePathFromEnvironment("HOME");
    if (home.empty())
        home = homeDirectoryOfUser();
    return home.empty() ? home : home + "/.local/share";
}

std::string groupContainer(const std::string &groupId)
{
    // Groups are no concept of this system: any folder that every process of the user finds will do.
    const std::string data = applicationSupportDirectory();
    return data.empty() ? data : data + "/group-containers/" + groupId;
}

} // namespace platform
