#pragma once

#include "config/Export.h"

#include <string>
#include <vector>

/// Access to files and folders that the user granted once, kept for later runs.
///
/// Inside the app sandbox a folder that the user chose in an open panel is reachable again in a later run through a
/// security-scoped bookmark only. These functions keep such bookmarks in the user defaults of the application, one
/// entry per path, under "vant_pdf_" + path. One trailing "/" of the path is left out there (but "/" keeps its own), so
/// that /a/b and /a/b/ are one entry. The *shared* functions exchange plain bookmarks with other processes.
///
/// Where there is no sandbox the store is a settings file of the user, and bookmarks are stale or fail to resolve just
/// as well.
///
/// All static and callable from any thread. Paths are UTF-8. Nothing throws: a failure is false or an empty result, and
/// what the system refuses a line in the system log.
class ONDPDFTOOLUTILS_EXPORT MacBookmark
{
public:
    /// Whether there is an entry for the path. It may be stale.
    static bool hasBookmark(const std::string &path);

    /// Makes an entry for what exists at `path`; for anything but a folder first one for the folder that contains it.
    /// Whether there is an entry for `path` afterwards. An entry that exists is left as it is, even a stale one.
    /// False, with nothing stored, when nothing exists at `path`.
    static bool createBookmark(const std::string &path);

    /// Starts access to what the entry for `path` leads to. False when there is no entry, when it does not resolve,
    /// when it is stale (it is not renewed then) and when access is denied. Pair every success with closeBookmark():
    /// nothing is counted here.
    static bool openBookmark(const std::string &path);

    /// Stops access; whether the entry for `path` resolved.
    static bool closeBookmark(const std::string &path);
    /// closeBookmark(): the entry stays.
    static bool deleteBookmark(const std::string &path);

    /// openBookmark() for an absolute path; false for any other. With `searchParents` the normalised path is tried,
    /// then each folder above it but the root, until one opens.
    static bool checkBookmarkForDir(const std::string &dir, bool searchParents);

    /// What has become of an entry. Only `valid` ones open.
    enum class State { valid, stale, unresolvable };
    /// An entry as the store has it.
    struct Entry
    {
        std::string path; ///< what it was made for
        State state; ///< what has become of it
    };
    /// Every entry, sorted by path. Starts no access and logs nothing.
    static std::vector<Entry> entries();

    /// A plain bookmark of what exists at `path`, for another process; empty on failure.
    static std::vector<unsigned char> createSharedBookmark(const std::string &path);
    /// Resolves a plain bookmark, which by itself gives this process access. The result says only that there were bytes
    /// to resolve; the system log says whether they resolved.
    static bool openSharedBookmark(const std::vector<unsigned char> &data);

    /// The plain bookmarks of several paths, in order, as compact JSON: [[98,111,111],[1,2]]. A path that gives none
    /// has an empty array.
    static std::string createSharedBookmarkJson(std::vector<std::string> paths);
    /// Opens every bookmark of such a text, and is true whatever came of it. False, with nothing opened, for a text
    /// that is not wholly an array of arrays of integers from 0 to 255, and for one of more than 4 MiB, which is far
    /// more than a thousand bookmarks take.
    static bool parseSharedBookmarkJson(const std::string &json);

private:
    static std::string generateBookMarkKey(const std::string &path);
    static bool saveToBookMark(const std::string &path);
};
