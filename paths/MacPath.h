#pragma once

#include "config/Export.h"

#include <string>

/// Folders of the running executable and of the user, as the platform names them.
///
/// Static, without state, callable from any thread; nothing is created on disk. Texts are UTF-8, and empty when the
/// platform does not know the answer.
class ONDPDFTOOLUTILS_EXPORT MacPath
{
public:
    /// The running executable's path.
    static std::string getAppFullPath();
    /// That path up to and including its last "/".
    static std::string getAppDirPath();
    /// That path up to and including its second-to-last "/": the bundle's Contents folder for an application. Empty
    /// when the path has fewer than two "/".
    static std::string getAppContentsDirPath();
    /// The folder in which applications keep the user's data, without a trailing "/": Application Support on macOS, the
    /// XDG data directory elsewhere. It need not exist.
    static std::string getUserDirPath();
};
