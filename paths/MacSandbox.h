#pragma once

#include "config/Export.h"

#include <functional>
#include <string>
#include <vector>

/// The standard folders of a group's container.
struct SharedPath
{
    /// Any other value means the container's root.
    enum Type : int {
        Temp = 1, ///< "/temp"
        Data = 2, ///< "/data"
        Config = 3, ///< "/config"
    };
};

/// The macOS app sandbox, and what stands in its place where there is none: folders of the user and of the product's
/// processes, access to folders, and the launch of other applications.
///
/// All static. What is found out once (sandbox flag, home folder, container of each group) is kept for the life of the
/// process: a later change of the environment or of the switches is not seen. Texts are UTF-8. Nothing throws.
class ONDPDFTOOLUTILS_EXPORT MacSandbox
{
public:
    /// What to launch. `arguments` refers to the caller's list, which must outlive the call.
    struct LaunchParams
    {
        /// Path of the application: required by openApp(), and for openURL() the application that is to open the URL.
        std::string appPath;
        std::string url; ///< For openURL().
        const std::vector<std::string> &arguments; ///< For openApp().
        bool activate = true; ///< For openURL(): brings the application to the front; otherwise it is hidden.
        bool newInstance = false; ///< Starts another instance when one is running.
    };

    /// Whether sandbox mode is on. Callable from any thread.
    static bool isSandBox();
    /// The application group of the product.
    static std::string appGroupId();
    /// The same followed by "/".
    static std::string appGroupIdPath();

    /// The user's real home folder, also from inside the sandbox, where HOME names the container: from the user
    /// database, else the first two folders of HOME, else "/Users/" + USER.
    static std::string getHomePath();

    /// The root of the container that the applications of a group share, without a trailing "/"; an empty `groupId`
    /// means appGroupId(). Where the platform knows no such container, a folder below getHomePath(). Not created here.
    /// Callable from any thread.
    static std::string getSharedPath(const std::string &groupId);
    /// A standard folder of that container, without a trailing "/". It is created, with all folders above it, when it
    /// is missing; the path is returned even if that fails.
    static std::string getSharedPath(SharedPath::Type type, const std::string &groupId);

    /// Asks the user for access to a folder through openNSFilePanel(). True only when the user chose exactly this
    /// folder (the path is normalised, links are not resolved). Another choice is a refusal, but its bookmark is stored
    /// all the same. An empty `prompt` means a Chinese text, "grant access". Main thread only.
    static bool requestPermission(const std::string &dirPath, const std::string &prompt);

    /// Shows a modal panel in which the user chooses one folder, or also a file unless `directoriesOnly`. It starts in
    /// `dirPath` and shows `prompt` on its confirm button, unless these are empty. On success the path is appended to
    /// `selectedPaths` and a bookmark of it is stored (MacBookmark::createBookmark). False when the user cancelled,
    /// or no panel can be shown. Main thread only.
    static bool openNSFilePanel(const std::string &dirPath, bool directoriesOnly, const std::string &prompt,
                                std::vector<std::string> &selectedPaths);

    /// Opens a URL, with the application at `params.appPath` if that is not empty, else with the default one. The URL
    /// is percent-encoded first, as far as its characters may not stand in the query of a URL (RFC 3986): hand it over
    /// unencoded, since "%" and "#" are encoded too.
    ///
    /// True when the launch was asked for. False, and `completion` is never called, when the URL is empty or no UTF-8,
    /// when the application does not exist, and when the platform would not take the request.
    ///
    /// `completion` later receives the process identifier of the application, 0 where the platform does not tell it, or
    /// -1 on failure. It runs on a thread of the platform's choice, which elsewhere than on macOS is one of its own and
    /// never the caller's. It must not be empty: calling it fails there with std::bad_function_call. Both outcomes are
    /// noted in the system log.
    static bool openURL(const LaunchParams &params, std::function<void(int)> completion);

    /// Starts the application at `params.appPath` with the arguments of `params`. Result and completion as for
    /// openURL(); false when no application is given or it does not exist.
    static bool openApp(const LaunchParams &params, std::function<void(int)> completion);

    /// Whether an application runs under this process identifier; elsewhere than on macOS any process. Callable from
    /// any thread.
    static bool isRunning(int pid);

    /// Waits until that application has ended, looking every 200 milliseconds, and returns 0; -1 when the time-out
    /// passed before. There is no time-out if `timeoutMs` is 0 or less, nor, on purpose, if it is a multiple of 200:
    /// the remaining time must fall below 0. Callable from any thread.
    static int waitProcFinish(int pid, int timeoutMs);
};
