#pragma once

#include "config/Export.h"

#include <string>

/// @file
/// The global configuration file "mk.dat": an INI file in the bundle's resources that carries the build switches.
///
/// The grammar is that of the inih library: [section] lines, key=value or key:value lines, comment lines that begin
/// with ";" or "#", comments behind a value that begin with " ;", a byte-order mark at the front allowed, names matched
/// without regard to case, indented lines continuing the value above, lines of at most 199 bytes without NUL. One line
/// that fits none of these makes the whole file unreadable; so does a size of more than kMaxGlobalFileSize. A key set
/// twice reads as both texts joined by a line feed; as a number, as the first.
///
/// Stateless, callable from any thread; nothing throws. The file is opened and parsed anew on every call, and never
/// written.

/// The size in bytes beyond which "mk.dat" is not read.
inline constexpr int kMaxGlobalFileSize = 1 << 20;

/// Whether anything exists at `path`: a file, a folder or any other type. False for the empty path, for one with
/// a NUL, and when the file system does not tell.
ONDPDFTOOLUTILS_EXPORT bool isPathExist(const std::string &path);

/// Path of "mk.dat": in "Contents/Resources/" of the first bundle in the executable's canonical path; for an executable
/// outside a bundle the bare name, which the system resolves against the current directory; empty where
/// MacConfigPath::GetCurrentExePath() would throw. The file need not exist.
ONDPDFTOOLUTILS_EXPORT std::string GetDatPath();

/// The integer (decimal, or with 0x or 0 in front) that the text stored under `key` in `section` begins with.
/// `defaultValue` when the file is missing, no regular file, unreadable or malformed; 0 when a readable file lacks the
/// key or the text begins with no integer. Values past the range of long are clamped.
ONDPDFTOOLUTILS_EXPORT long GetIntValueFromMKDat(const std::string &section, const std::string &key, long defaultValue);

/// The text stored under `key` in `section`; `defaultValue` when the file is missing, no regular file, unreadable or
/// malformed, or lacks the key or a value for it.
ONDPDFTOOLUTILS_EXPORT std::string GetStrValueFromMKDat(const std::string &section, const std::string &key,
                                                        const std::string &defaultValue);
