#pragma once

#include <string>

/// Applications that are installed on this machine, running or not. Callable from any thread.
namespace platform {

/// Whether an application with exactly this bundle identifier is installed for the user. False for an empty identifier.
/// macOS: whether Launch Services knows one. Elsewhere: whether a desktop entry IDENTIFIER.desktop lies in
/// "applications/" of the user's data folder or of a folder of XDG_DATA_DIRS, as freedesktop.org names and
/// places it, or a bundle with that CFBundleIdentifier in "/Applications" or in "Applications" of the user's
/// home folder.
[[nodiscard]] bool isApplicationInstalled(const std::string &bundleId);

} // namespace platform
