#pragma once

#include <optional>
#include <string>

/// What precedes the first ".app/Contents/" in the path of an executable's folder (which ends in "/"): the main
/// application's bundle without ".app". Nothing for an executable outside a bundle.
[[nodiscard]] std::optional<std::string> prefixOfMainBundle(const std::string &executableDir);

/// `path` with a "/" appended unless it is empty or ends in one.
[[nodiscard]] std::string withTrailingSlash(std::string path);
