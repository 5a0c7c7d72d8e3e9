#include "paths/platform/Bundle_p.h"

#include "paths/platform/mac/Strings_p.h"

#include <cstdint>
#include <filesystem>
#include <mach-o/dyld.h>

namespace platform {

using mac::toNSString;
using mac::toUtf8;

namespace {

std::string textIn(NSDictionary *dictionary, const std::string &key)
{
    NSString *name = toNSString(key);
    id value = name ? [dictionary objectForKey:name] : nil;
    return [value isKindOfClass:[NSString class]] ? toUtf8(value) : std::string();
}

} // namespace

std::optional<std::string> executablePath()
{
    std::string path(1024, '\0');
    auto size = static_cast<std::uint32_t>(path.size());
    int failure = _NSGetExecutablePath(path.data(), &size);
    if (failure != 0 && size > path.size()) { // it has told the size that would do
        path.resize(size);
        failure = _NSGetExecutablePath(path.data(), &size);
    }
    return failure == 0 ? std::optional<std::string>(path.c_str()) : std::nullopt;
}

std::string bundleExecutablePath()
{
    // The bundle names the program of its CFBundleExecutable, whoever runs, and nothing where that is missing: for any
    // other program of the bundle the loader knows better.
    const std::string running = executablePath().value_or("");
    @autoreleasepool {
        const std::string named = toUtf8([[NSBundle mainBundle] executablePath]);
        std::error_code error;
        return std::filesystem::equivalent(named, running, error) ? named : running;
    }
}

std::string bundlePath()
{
    @autoreleasepool {
        return toUtf8([[NSBundle mainBundle] bundlePath]);
    }
}

std::string bundleIdentifier()
{
    @autoreleasepool {
        return toUtf8([[NSBundle mainBundle] bundleIdentifier]);
    }
}

std::string bundleInfo(const std::string &key)
{
    @autoreleasepool {
        return textIn([[NSBundle mainBundle] infoDictionary], key);
    }
}

std::string bundleInfo(const std::string &bundlePath, const std::string &key)
{
    @autoreleasepool {
        NSString *path = toNSString(bundlePath);
        return path ? textIn([[NSBundle bundleWithPath:path] infoDictionary], key) : std::string();
    }
}

std::string propertyListInfo(const std::string &plistPath, const std::string &key)
{
    @autoreleasepool {
        NSString *path = toNSString(plistPath);
        return path ? textIn([NSDictionary dictionaryWithContentsOfFile:path], key) : std::string();
    }
}

} // namespace platform
