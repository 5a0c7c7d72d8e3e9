#include "paths/platform/Bundle_p.h"

#include "paths/platform/generic/PropertyList_p.h"

#include <climits>
#include <cstring>
#include <filesystem>
#include <unistd.h>

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

ExecutablePathStatus executablePath(char *buffer, std::size_t &size)
{
    // The kernel's own limit; readlink cuts a longer text without saying so.
    char target[PATH_MAX + 1];
    const ssize_t length = ::readlink("/proc/self/exe", target, sizeof target);
    if (length <= 0)
        return ExecutablePathStatus::failed;

    const auto needed = static_cast<std::size_t>(length) + 1;
    if (needed > size) {
        size = needed;
        return ExecutablePathStatus::bufferTooSmall;
    }
    std::memcpy(buffer, target, needed - 1);
    buffer[needed - 1] = '\0';
    return ExecutablePathStatus::ok;
}

std::string bundleExecutablePath()
{
    // Asked once: later the link would follow a renamed bundle, and lead nowhere when the executable is replaced.
    static const std::string path = [] {
        std::error_code error;
        return fs::read_symlink("/proc/self/exe", error).string();
    }();
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
