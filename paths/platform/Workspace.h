#pragma once

#include <string>

/// Other applications of the user's session. Callable from any thread.
namespace platform {

/// Whether an application with exactly this bundle identifier is running.
[[nodiscard]] bool isApplicationRunning(const std::string &bundleId);

/// Opens an address with the application that is registered for it; whether that was started.
[[nodiscard]] bool openUrl(const std::string &url);

} // namespace platform
