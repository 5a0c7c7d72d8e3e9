#pragma once

#include <optional>
#include <string>

/// The running executable and application bundles. All texts are UTF-8; a value that the platform does not know is
/// empty. Callable from any thread.
namespace platform {

/// The running executable's path as the platform knows it (not canonical); nothing when it does not tell. Of one that
/// was removed or replaced, the path that it had.
[[nodiscard]] std::optional<std::string> executablePath();

/// The running executable's path as its bundle has it, else as executablePath() does.
[[nodiscard]] std::string bundleExecutablePath();
/// Path of the running bundle, without a trailing "/"; for an executable outside a bundle, its folder.
[[nodiscard]] std::string bundlePath();
/// Identifier of the running bundle.
[[nodiscard]] std::string bundleIdentifier();

/// A text of the information dictionary of the running bundle, of the bundle at `bundlePath`, and of the dictionary
/// that the property list at `plistPath` holds.
[[nodiscard]] std::string bundleInfo(const std::string &key);
[[nodiscard]] std::string bundleInfo(const std::string &bundlePath, const std::string &key);
[[nodiscard]] std::string propertyListInfo(const std::string &plistPath, const std::string &key);

} // namespace platform
