#include "config/ParentAppDir_p.h"

#include "config/MacConfigPath.h"
#include "paths/PathUtils.h"

QString parentAppDir()
{
    const std::string bundle = MacConfigPath::GetInstance()->GetMainAppRootDir();
    return bundle.empty() ? PathUtils::getApplicationDir() : QString::fromStdString(bundle + "Contents/MacOS/");
}
