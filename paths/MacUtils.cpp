#include "paths/MacUtils.h"

#include "paths/BundlePath_p.h"
#include "paths/MacPath.h"
#include "paths/StringUtils.h"
#include "paths/platform/Bundle_p.h"
#include "paths/platform/Clock_p.h"
#include "paths/platform/Idle_p.h"
#include "paths/platform/Menu_p.h"
#include "paths/platform/Reachability_p.h"
#include "paths/platform/Screen_p.h"
#include "paths/platform/System_p.h"
#include "paths/platform/Workspace_p.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace {

constexpr char kVersionKey[] = "CFBundleShortVersionString";
constexpr char kSecurityPane[] = "x-apple.systempreferences:com.apple.preference.security";

/// A value of the running bundle, or of the application that owns the executable's "MacOS_SymLink" folder.
std::string infoOfRunningBundle(const std::string &key)
{
    std::string value = platform::bundleInfo(key);
    if (!value.empty())
        return value;
    const QString owner = getAppDirByMacOSSymLinkPath(QString::fromStdString(platform::bundlePath()));
    return owner.isNull() ? value : platform::bundleInfo(owner.toStdString(), key);
}

std::string mainAppPath(const char *tail)
{
    const std::optional<std::string> prefix = prefixOfMainBundle(MacPath::getAppDirPath());
    return prefix ? *prefix + tail : std::string();
}

struct Version
{
    int major;
    int minor;
    int build;
};

std::optional<Version> bundleVersion(bool fromMainApp)
{
    std::vector<int> fields;
    if (!VersionToIntVec(fromMainApp ? MacUtils::GetMainBundleVersionString() : MacUtils::GetBundleVersionString(),
                         fields))
        return std::nullopt;
    return Version{fields[0], fields[1], fields[2]};
}

void assign(unsigned short *target, int value)
{
    if (target)
        *target = static_cast<unsigned short>(value);
}

} // namespace

std::string MacUtils::GetAppName()
{
    return infoOfRunningBundle("CFBundleName");
}

std::string MacUtils::GetOrgName()
{
    return platform::bundleIdentifier();
}

std::string MacUtils::GetBundleVersionString()
{
    return infoOfRunningBundle(kVersionKey);
}

std::string MacUtils::GetMainBundleVersionString()
{
    const std::string path = GetMainAppPListFullPath();
    return path.empty() ? path : platform::propertyListInfo(path, kVersionKey);
}

std::string MacUtils::GetMainAppBasicPath()
{
    return mainAppPath(".app");
}

std::string MacUtils::GetMainAppPListFullPath()
{
    return mainAppPath(".app/Contents/Info.plist");
}

bool MacUtils::GetBundleVersionNumbers(unsigned short *major, unsigned short *minor, unsigned short *third,
                                       unsigned short *fourth, bool fromMainApp)
{
    const std::optional<Version> version = bundleVersion(fromMainApp);
    constexpr int limit = 65536;
    if (!version || version->major >= limit || version->minor >= limit || version->build >= limit)
        return false;
    assign(major, version->major);
    assign(minor, version->minor);
    assign(third, 0);
    assign(fourth, version->build);
    return true;
}

int MacUtils::GetBundleVersionInt(bool fromMainApp)
{
    const std::optional<Version> version = bundleVersion(fromMainApp);
    if (!version)
        return 0;
    // Unsigned, so that fields out of range wrap around in 32 bits instead of being undefined.
    return static_cast<int>(static_cast<unsigned>(version->major) * 1000000U
                            + static_cast<unsigned>(version->minor) * 10000U + static_cast<unsigned>(version->build));
}

int MacUtils::GetBundleVersionTail(bool fromMainApp)
{
    const std::optional<Version> version = bundleVersion(fromMainApp);
    return version ? version->build : 0;
}

std::string MacUtils::getResourcePath(const std::string &name)
{
    const std::string path = MacPath::getAppFullPath();
    return path.substr(0, path.rfind('/')) + "/" + name;
}

bool MacUtils::IsProcessRunning(const std::string &bundleId)
{
    return IsProcessRunningOC(QString::fromStdString(bundleId));
}

std::uint64_t MacUtils::GetTickCount()
{
    return platform::monotonicNanoseconds() / 1'000'000U;
}

std::pair<double, double> MacUtils::GetMainScreenSize()
{
    return platform::mainScreenSize();
}

bool MacUtils::checkNetworkAvailable()
{
    const auto flags = platform::zeroAddressReachability();
    return flags && flags->reachable && !flags->connectionRequired;
}

std::uint64_t MacUtils::getSystemSharedMemorySize()
{
    return platform::sharedMemorySize();
}

bool IsProcessRunningOC(const QString &bundleId)
{
    return !bundleId.isNull() && platform::isApplicationRunning(bundleId.toStdString());
}

QString getAppDirByMacOSSymLinkPath(const QString &path)
{
    std::filesystem::path folder(path.toStdString());
    if (!folder.has_filename())
        folder = folder.parent_path();
    if (folder.filename() != "MacOS_SymLink")
        return {};
    return QString::fromStdString(folder.parent_path().parent_path().string());
}

bool isMainThreadIdle()
{
    return platform::secondsSinceLastInput() > 1.0;
}

bool extendRequestAuthorization()
{
    return platform::openUrl(kSecurityPane);
}

void updateMacOSMenuTitles(QMap<QString, QString> titles)
{
    platform::retitleSubmenuItems([&titles](const QString &title) -> std::optional<QString> {
        const auto found = titles.constFind(title);
        return found == titles.constEnd() ? std::nullopt : std::optional(*found);
    });
}
