#include "tools/inspect/Sections.h"

#include "config/GlobalConfigFile.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "paths/MacPath.h"
#include "paths/MacUtils.h"
#include "tools/inspect/Account.h"
#include "tools/inspect/Doctor.h"
#include "tools/inspect/Languages.h"
#include "tools/inspect/Paths.h"
#include "tools/inspect/Product.h"
#include "tools/inspect/Urls.h"

namespace inspect {

namespace {

Json locations()
{
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    return {
        {"GetCurrentExePath", MacConfigPath::GetCurrentExePath()},
        {"GetExeDir", paths->GetExeDir()},
        {"GetExeName", paths->GetExeName()},
        {"GetMainAppRootDir", paths->GetMainAppRootDir()},
        {"GetMainAppName", paths->GetMainAppName()},
        {"GetAppConfigDir", paths->GetAppConfigDir()},
        {"GetDatPath", GetDatPath()},
        {"GetUserDataDir", paths->GetUserDataDir()},
        {"GetLogPath", paths->GetLogPath()},
        {"getAppFullPath", MacPath::getAppFullPath()},
        {"getAppDirPath", MacPath::getAppDirPath()},
        {"getAppContentsDirPath", MacPath::getAppContentsDirPath()},
        {"getUserDirPath", MacPath::getUserDirPath()},
        {"GetMainAppBasicPath", MacUtils::GetMainAppBasicPath()},
        {"GetMainAppPListFullPath", MacUtils::GetMainAppPListFullPath()},
        {"GetAppName", MacUtils::GetAppName()},
        {"GetOrgName", MacUtils::GetOrgName()},
        {"GetBundleVersionString", MacUtils::GetBundleVersionString()},
        {"GetMainBundleVersionString", MacUtils::GetMainBundleVersionString()},
    };
}

Json switches()
{
    return {
        {"IsEnableFileLog", MacGlobalConfig::IsEnableFileLog()},
        {"IsEnableSandBox", MacGlobalConfig::IsEnableSandBox()},
        {"IsAppleStorePKG", MacGlobalConfig::IsAppleStorePKG()},
        {"isInternationalApp", MacGlobalConfig::isInternationalApp()},
        {"GetShareGroupName", MacGlobalConfig::GetShareGroupName()},
    };
}

} // namespace

const std::vector<Section> &sections()
{
    static const std::vector<Section> all = {
        {"locations", "where the executable, its bundle and the user's data are", locations},
        {"switches", "the build switches of mk.dat", switches},
        {"product", "the product's names, addresses, ids and switches", product},
        {"identity", "who this installation is", identity},
        {"urls", "the service addresses, and what chooses among them", urls},
        {"paths", "the product's well-known files and folders", paths},
        {"languages", "the languages to choose from, and the one in use", languages},
        {"account", "who is logged in", account},
        {"doctor", "what is wrong with this installation", examination, true},
    };
    return all;
}

} // namespace inspect
