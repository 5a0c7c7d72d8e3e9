#include "paths/platform/Bundle_p.h"

#include "paths/platform/generic/PropertyList_p.h"

#include <filesystem>
#include <string_view>

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
    std::string path = fs::read_symlink("/proc/self/exe", error).string();
    // So the kernel marks one that is gone. An update has put another in its place, in the bundle that is still ours.
    constexpr std::string_view mark = " (deleted)";
    if (path.size() > mark.size() && path.compare(path.size() - mark.size(), mark.size(), mark) == 0
        && !fs::exists(path, error))
        path.resize(path.size() - mark.size());
    return path.empty() ? std::nullopt : std::optional(path);
}

std::string bundleExecutablePath()
{
    // Asked once: later the link would follow a renamed bundle. Outlives what asks at exit.
    static const auto &path = *new std::string(executablePath().value_or(""));
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
