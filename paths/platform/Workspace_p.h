#pragma once

#include <functional>
#include <string>
#include <vector>

/// Other applications of the user's session. Callable from any thread.
namespace platform {

/// Whether an application with exactly this bundle identifier is running.
[[nodiscard]] bool isApplicationRunning(const std::string &bundleId);

/// macOS: whether an application runs under this process identifier. Elsewhere: whether any process does; one that has
/// ended and was not waited for yet does not run.
[[nodiscard]] bool isProcessRunning(int processId);

/// Opens an address with the application that is registered for it; whether that was started. Elsewhere than on macOS
/// it must have a scheme, so that it is never taken for an option of the program that opens it.
[[nodiscard]] bool openUrl(const std::string &url);

/// What to launch: a URL, with the application at a path or else with the default one; or, without a URL, that
/// application. Elsewhere than on macOS windows are placed by their application: `hides` and `activates` have no
/// effect.
struct LaunchRequest
{
    std::string url;
    std::string applicationPath;
    bool hides = false;
    bool activates = true;
    bool createsNewInstance = false;
    std::vector<std::string> arguments; ///< For an application without a URL.
};

struct LaunchOutcome
{
    bool launched = false;
    std::string description; ///< The application, or what went wrong.
    int processId = 0; ///< 0 when the platform does not tell.
};

/// Receives the outcome of a launch, once. Runs on a thread of the platform's choice; elsewhere than on macOS that is a
/// thread of its own, never the caller's. What it throws ends the process there.
using LaunchHandler = std::function<void(const LaunchOutcome &)>;

/// Launches. False, and `handler` is never called, when it could not even be asked for.
///
/// macOS: through NSWorkspace. Elsewhere an application is an executable, or a bundle whose executable is the file in
/// Contents/MacOS that Info.plist names, else the one named like the bundle, else the only one. It is started as a
/// detached process, without a shell and with the null device as its standard streams; a bundle that runs already is
/// not started again unless `createsNewInstance` says so: its process is reported. A URL must have a scheme, so that it
/// is never taken for an option. It is the only argument of a new process of its application; without one,
/// QDesktopServices opens it, which needs a QGuiApplication and does not tell the process.
[[nodiscard]] bool launch(const LaunchRequest &request, const LaunchHandler &handler);

} // namespace platform
