#pragma once

#include "config/Export.h"

#include <string>

/// The diagnostic log: one time-stamped line per call, appended to the file that MacConfigPath::GetLogPath() names.
///
/// It is on when the switch "enable_log" of "mk.dat" is on, and otherwise while its file exists: support staff turn it
/// on for one machine by creating that file, at once and without a restart. The file grows without bound.
///
/// A line is
///
///     2025-03-07 14:05:09 [pid:4312 tid:0x7f2a4c1b0740]  message
///
/// with the local time, the process, the POSIX handle of the calling thread, two spaces, the message as it is (embedded
/// line feeds included) and a line feed. No file stays open between calls: each opens it, appends its line with one
/// write, and closes it, so that the lines of many threads and processes stay whole. A line that could be written only
/// in part, on a full disk or because its process was killed, stands by itself: the next line begins with a line feed,
/// if the file may be read.
///
/// Callable from any thread, and until the process is gone: a line from the destructor of a static object is written
/// even if it is the first. So is a line from the child of a fork, before or without exec. One exception: if the
/// forking process had other threads, and had neither logged nor asked IsLogEnable() before the fork, a child that logs
/// may wait for ever. A child's lines use the UTC offset that the log knew before the fork.
class ONDPDFTOOLUTILS_EXPORT CommonFileLog
{
public:
    /// Whether the log is on. Throws std::filesystem::filesystem_error if it is off in "mk.dat" and the file system
    /// does not tell whether its file exists.
    static bool IsLogEnable();

    /// Appends a line. Never throws and never waits for a reader: a line that cannot be written is dropped in silence.
    /// Creates the file only when "mk.dat" switches the log on, and never its folder.
    static void WriteLog(const std::string &message);
    /// The same for a wide message. Throws as wstringToString() does.
    static void WriteLog(const std::wstring &message);

    /// UTF-8 of a UTF-32 text. Throws std::range_error("wstring_convert: to_bytes error") when the text holds a
    /// surrogate or a value above U+10FFFF.
    static std::string wstringToString(const std::wstring &text);
};
