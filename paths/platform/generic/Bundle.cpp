#include "paths/platform/Bundle_p.h"

#include "paths/platform/generic/PropertyList_p.h"

#include <filesystem>

namespace platform {

namespace fs = std::filesystem;

namespace {

/// The bundle that an executable's path shows: X.app for X.app/Contents/MacOS/name, else the executable's folder.
fs::path enclosingBundle(const fs::path &executable)
{
    fs::path folder = executable.parent_path();
    if (folder.filename() == "MacOS" && folder.parent_path().filename() == "Contents")
        return folder.parent_path().parent_path();
    return folder;
}

} // namespace

std::optional<std::string> executablePath()
{
    std::error_code error;
    const std::string path = fs::read_symlink("/proc/self/exe", error).string();
    return path.empty() ? std::nullopt : std::optional(path);
}

std::string bundleExecutablePath()
{
    // Asked once: later the link would follow a renamed bundle, and lead nowhere when the executable is replaced.
    static const std::string path = executablePath().value_or("");
    return path;
}

std::string bundlePath()
{
    return enclosingBundle(bundleExecutablePath()).string();
}

std::string bundleIdentifier()
{
    return bundleInfo("CFBundleIdentifier");
}

std::string bundleInfo(const std::string &key)
{
    return bundleInfo(bundlePath(), key);
}

std::string bundleInfo(const std::string &bundlePath, const std::string &key)
{
    return generic::propertyListText(bundlePath + "/Contents/Info.plist", key);
}

std::string propertyListInfo(const std::string &plistPath, const std::string &key)
{
    return generic::propertyListText(plistPath, key);
}

} // namespace platform
