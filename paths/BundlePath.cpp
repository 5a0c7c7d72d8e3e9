#include "paths/BundlePath_p.h"

std::optional<std::string> prefixOfMainBundle(const std::string &executableDir)
{
    const std::size_t marker = executableDir.find(".app/Contents/");
    if (marker == std::string::npos)
        return std::nullopt;
    return executableDir.substr(0, marker);
}

std::string withTrailingSlash(std::string path)
{
    if (!path.empty() && path.back() != '/')
        path += '/';
    return path;
}
