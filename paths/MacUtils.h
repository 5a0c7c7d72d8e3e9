#pragma once

#include "config/Export.h"

#include <QMap>
#include <QString>
#include <cstdint>
#include <string>
#include <utility>

/// What the product's processes ask about themselves and the system: names and versions of their bundle and of the main
/// application, other applications, clock, screen and network.
///
/// Two bundles are meant throughout. The *running bundle* is the innermost one around the executable. The *main
/// application* is the outermost: what lies before the first ".app/Contents/" in the path of the executable's folder.
/// Companion executables may lie in a folder "MacOS_SymLink" of the application that owns them; a name or version that
/// the running bundle lacks is then taken from the bundle two path components higher.
///
/// All functions here, the free ones included, may be called from any thread unless they say otherwise. None throws for
/// what it finds on the system: a missing value is empty, false or 0. Texts are UTF-8. The property lists of the
/// bundles are read from disk, and nothing is written.
class ONDPDFTOOLUTILS_EXPORT MacUtils
{
public:
    /// "CFBundleName" of the running bundle.
    static std::string GetAppName();
    /// Identifier of the running bundle ("com.example.reader"), of that one alone.
    static std::string GetOrgName();
    /// "CFBundleShortVersionString" of the running bundle.
    static std::string GetBundleVersionString();
    /// "CFBundleShortVersionString" of the main application, from the file that GetMainAppPListFullPath() names.
    static std::string GetMainBundleVersionString();

    /// Path of the main application's bundle, ending in ".app"; empty for an executable outside a bundle.
    static std::string GetMainAppBasicPath();
    /// Path of the main application's Info.plist, which need not exist; empty for an executable outside a bundle.
    static std::string GetMainAppPListFullPath();

    /// The version of the main application (`fromMainApp`) or of the running bundle, as four numbers: a version
    /// *major.minor.build* gives major, minor, 0, build, as the product's four-part versions on other platforms have
    /// it. Each pointer may be null. False, with nothing written, unless the version is three decimal fields below
    /// 65536.
    static bool GetBundleVersionNumbers(unsigned short *major, unsigned short *minor, unsigned short *third,
                                        unsigned short *fourth, bool fromMainApp);
    /// The same version as one number: major * 1000000 + minor * 10000 + build (2.5.31 is 2050031), with no check of
    /// the fields' ranges; 0 when the version is not three decimal fields.
    static int GetBundleVersionInt(bool fromMainApp);
    /// The same version's build field; 0 when the version is not three decimal fields.
    static int GetBundleVersionTail(bool fromMainApp);

    /// The executable's folder + "/" + `name`; the folder is empty when the platform does not tell.
    static std::string getResourcePath(const std::string &name);

    /// Whether an application with exactly this bundle identifier is running. On macOS, a program whose main thread has
    /// no run loop sees only the applications that ran at its first call: it does not notice later starts and ends.
    static bool IsProcessRunning(const std::string &bundleId);

    /// Milliseconds of a monotonic clock since an arbitrary start.
    static std::uint64_t GetTickCount();

    /// Width and height of the main screen in points; zeros without one. Main thread only.
    static std::pair<double, double> GetMainScreenSize();

    /// Whether the network can be used without a connection being made first.
    static bool checkNetworkAvailable();

    /// The system's maximum size of a shared-memory segment in bytes; 0 when the system does not tell. On macOS it is
    /// what a system command prints.
    static std::uint64_t getSystemSharedMemorySize();
};

/// MacUtils::IsProcessRunning for Qt callers. False for a null text.
ONDPDFTOOLUTILS_EXPORT bool IsProcessRunningOC(const QString &bundleId);

/// The path two components higher when the last component of `path` is "MacOS_SymLink"; otherwise, and for a null text,
/// a null text.
ONDPDFTOOLUTILS_EXPORT QString getAppDirByMacOSSymLinkPath(const QString &path);

/// Whether more than 1.0 second has passed since the user's last input event of any kind. On systems other than macOS,
/// only events that this application received count, and the answer is true without an application object.
ONDPDFTOOLUTILS_EXPORT bool isMainThreadIdle();

/// Opens the security pane of the system settings, where the user can grant the product a permission; whether it was
/// opened.
ONDPDFTOOLUTILS_EXPORT bool extendRequestAuthorization();

/// Gives every item of every submenu of the application's main menu the title that `titles` holds for its current one.
/// Top-level items, and items of deeper menus, keep theirs. Nothing happens without a main menu. Main thread only.
ONDPDFTOOLUTILS_EXPORT void updateMacOSMenuTitles(QMap<QString, QString> titles);
