#pragma once

#include <functional>
#include <string>
#include <vector>

/// Bookmarks: data from which a later run, or another process, finds a file or folder again. Callable from any thread.
///
/// macOS: bookmarks of NSURL; the options are its NSURLBookmarkCreationOptions and NSURLBookmarkResolutionOptions.
///
/// Elsewhere a bookmark holds the absolute path and what tells a folder there from a later one under that path: the
/// inode, and the time of birth where the file system has it, because inodes are used again. It resolves while
/// something exists at the path, and is stale when a folder is not the same one, or no folder any more. A document is
/// the one at its path, since saving replaces it. The device does not count, being another after the next mount. What
/// was moved is not followed: its bookmark does not resolve. Options mean nothing there, since every path stands open
/// that the user may open.
namespace platform {

struct CreatedBookmark
{
    std::vector<unsigned char> data; ///< Empty on failure.
    std::string error;
};

/// A bookmark of what exists at `path`.
[[nodiscard]] CreatedBookmark createBookmark(const std::string &path, unsigned long options);

/// What a bookmark leads to. Any data of another origin ends in failure: both functions are empty then, and `error`
/// says why. Giving this up leaves access as it is.
struct ResolvedBookmark
{
    std::string error;
    bool stale = false;
    /// Whether the target can now be accessed. macOS: starts security-scoped access. Elsewhere: whether the user may
    /// read the target, and enter it if it is a folder.
    std::function<bool()> startAccess;
    std::function<void()> stopAccess;
};

[[nodiscard]] ResolvedBookmark resolveBookmark(const std::vector<unsigned char> &data, unsigned long options);

} // namespace platform
