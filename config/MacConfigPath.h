#pragma once

#include "config/Export.h"

#include <string>

/// Where this process's application lies on disk, and where its user's data lies.
///
/// Worked out once, from the canonical path of the running executable, and immutable afterwards: callable from any
/// thread. Nothing is created on disk. All texts are UTF-8; folders end in "/". The main application's bundle is what
/// lies before the first ".app/Contents/" of the executable's folder, so that executables nested deeper in the bundle
/// find the same one; outside a bundle its root and name are empty.
///
/// Relative names may use "\" or "/"; the first 64 backslashes of a name become "/". The getters that take a name write
/// their answer to the diagnostic log.
///
/// Only GetInstance() and GetCurrentExePath() throw: std::filesystem::filesystem_error, if the executable was removed
/// or moved before the library first asked for its path. Once known, the path is remembered: nothing here changes when
/// an update replaces the application while it runs. Without the path, all other classes answer empty, false or the
/// default.
class ONDPDFTOOLUTILS_EXPORT MacConfigPath
{
public:
    /// The process's only instance, made by the first call and never destroyed. Only a call that has to make it can
    /// throw.
    static MacConfigPath *GetInstance();

    MacConfigPath(const MacConfigPath &) = delete;
    MacConfigPath &operator=(const MacConfigPath &) = delete;

    /// The folder of the running executable, symbolic links resolved; empty when the platform does not tell.
    std::string GetExeDir() const;
    /// The file name of the running executable.
    std::string GetExeName() const;
    /// The main application's bundle, ending in ".app/".
    std::string GetMainAppRootDir() const;
    /// The bundle's name without ".app"; the product's default name for a bundle called just ".app".
    std::string GetMainAppName() const;
    /// The user's data folder. With the sandbox on: the application group's container; otherwise the user's
    /// application-support folder + bundle name + "/", which ends in "//" outside a bundle. Where the platform does not
    /// know the folder, "~/Library/Application Support/" takes its place, with the tilde unexpanded.
    std::string GetUserDataDir() const;

    /// The bundle's resource folder; empty outside a bundle.
    std::string GetAppConfigDir() const;
    /// `relative` in the bundle's resource folder; empty outside a bundle.
    std::string GetAppConfigPath(const std::string &relative) const;
    /// `relative` in the bundle's Contents folder; outside a bundle the name alone, with "/" for "\".
    std::string GetExeFullPath(const std::string &relative) const;
    /// `relative` in the user's data folder.
    std::string GetUserDataPath(const std::string &relative) const;
    /// The diagnostic log's file: executable name + ".log" in the user's data folder; the product's default name for an
    /// executable without one. Writes no log line itself.
    std::string GetLogPath() const;
    /// Whether `relative` (here with "/" only) exists in the user's data folder; false for an empty name.
    bool IsAppDataFileExist(const std::string &relative) const;

    /// The running executable's canonical path as it was when the library first asked for it; empty when the platform
    /// does not tell.
    static std::string GetCurrentExePath();

    /// Replaces occurrences of `from` in `text` by `to`, from left to right and at most 64 of them, and returns how
    /// many were replaced. An empty `from` inserts `to` once at the front and returns 1.
    static int ReplaceAll(std::string &text, const std::string &from, const std::string &to);

    ///@{

    /// Fill the fields, in this order. The constructor calls them. The first two do nothing when their fields are
    /// filled; InitUserDataDir() asks the platform anew on every call. Not safe beside other threads. The
    /// diagnostic log stays with the file that it had first.
    void InitCurrentExePathName();
    void InitMainAppRootDir();
    void InitUserDataDir();
    ///@}

private:
    MacConfigPath();
    ~MacConfigPath();

    std::string m_exeDir;
    std::string m_exeName;
    std::string m_mainAppRootDir;
    std::string m_mainAppName;
    std::string m_userDataDir;
};
