#include "paths/platform/Bookmark_p.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace fs = std::filesystem;

namespace {

/// What bookmark data begins with; the path follows. In the byte order of this machine, which alone reads it.
struct Header
{
    char signature[8] = {'b', 'o', 'o', 'k', '\r', '\n', '\x1a', '\x01'}; // the last is the version
    std::uint64_t pathSize = 0;
    std::uint64_t kind = 0; // S_IFDIR for a folder
    std::uint64_t inode = 0;
    std::int64_t birthSeconds = 0; // 0 where the file system does not know
    std::uint64_t birthNanoseconds = 0;
};
static_assert(sizeof(Header) == 48, "no gaps: headers are stored as their bytes");

/// The header of a bookmark of what is at `path` now; nothing, with errno set, when there is nothing.
std::optional<Header> headerFor(const std::string &path)
{
    struct statx status
    {
    };
    if (path.find('\0') != std::string::npos) {
        errno = ENOENT; // and not what lies at the part before it
        return std::nullopt;
    }
    if (::statx(AT_FDCWD, path.c_str(), 0, STATX_TYPE | STATX_INO | STATX_BTIME, &status) != 0)
        return std::nullopt;
    Header header;
    header.pathSize = path.size();
    header.kind = status.stx_mode & S_IFMT;
    header.inode = status.stx_ino;
    if (status.stx_mask & STATX_BTIME) {
        header.birthSeconds = status.stx_btime.tv_sec;
        header.birthNanoseconds = status.stx_btime.tv_nsec;
    }
    return header;
}

bool isSameFolder(const Header &then, const Header &now)
{
    const bool knowsBirth = then.birthSeconds != 0 && now.birthSeconds != 0;
    return now.kind == S_IFDIR && then.inode == now.inode
        && (!knowsBirth || (then.birthSeconds == now.birthSeconds && then.birthNanoseconds == now.birthNanoseconds));
}

struct Content
{
    Header header;
    std::string path;
};

std::optional<Content> decoded(const std::vector<unsigned char> &data)
{
    Content content;
    if (data.size() < sizeof(Header))
        return std::nullopt;
    std::memcpy(&content.header, data.data(), sizeof(Header));
    if (std::memcmp(content.header.signature, Header().signature, sizeof Header::signature) != 0
        || content.header.pathSize != data.size() - sizeof(Header))
        return std::nullopt;
    content.path.assign(data.begin() + sizeof(Header), data.end());
    return content;
}

bool canAccess(const std::string &path)
{
    std::error_code error;
    return ::access(path.c_str(), fs::is_directory(path, error) ? R_OK | X_OK : R_OK) == 0;
}

std::string failureAt(const std::string &path)
{
    return std::error_code(errno, std::generic_category()).message() + " (" + path + ")";
}

} // namespace

CreatedBookmark createBookmark(const std::string &path, unsigned long /*options*/)
{
    std::error_code error;
    const std::string absolute = fs::absolute(path, error).string();
    const std::optional<Header> header = headerFor(absolute);
    if (!header)
        return {{}, failureAt(path)};

    const auto *bytes = reinterpret_cast<const unsigned char *>(&*header);
    std::vector<unsigned char> data(bytes, bytes + sizeof(Header));
    data.insert(data.end(), absolute.begin(), absolute.end());
    return {std::move(data), {}};
}

ResolvedBookmark resolveBookmark(const std::vector<unsigned char> &data, unsigned long /*options*/)
{
    const std::optional<Content> content = decoded(data);
    if (!content)
        return {"no bookmark data of this version", false, {}, {}};
    const std::optional<Header> now = headerFor(content->path);
    if (!now)
        return {failureAt(content->path), false, {}, {}};
    const bool wasOrIsFolder = content->header.kind == S_IFDIR || now->kind == S_IFDIR;
    const bool stale = wasOrIsFolder && !isSameFolder(content->header, *now);
    return {{}, stale, [path = content->path] { return canAccess(path); }, [] {}};
}

} // namespace platform
