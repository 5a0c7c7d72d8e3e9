#include "paths/MacBookmark.h"

#include "config/GlobalConfigFile.h"
#include "paths/platform/Bookmark_p.h"
#include "paths/platform/SystemLog_p.h"
#include "paths/platform/UserDefaults_p.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

namespace fs = std::filesystem;

namespace {

using Bytes = std::vector<unsigned char>;

constexpr char kKeyPrefix[] = "vant_pdf_";

// Options of NSURL bookmarks.
constexpr unsigned long kCreateWithSecurityScope = 2048;
constexpr unsigned long kResolveWithSecurityScope = 1024;
constexpr unsigned long kPlain = 0;
/// More than a thousand bookmarks. Parsed, the worst text takes eighty times its size.
constexpr std::size_t kMaxSharedText = 4 << 20;

Bytes createData(const std::string &path, unsigned long options)
{
    platform::CreatedBookmark bookmark = platform::createBookmark(path, options);
    if (bookmark.data.empty())
        platform::systemLog("Error creating bookmark: " + bookmark.error + ", " + path);
    return std::move(bookmark.data);
}

/// What the entry under a key leads to; empty when there is no entry or it does not resolve.
platform::ResolvedBookmark resolveEntry(const std::string &key)
{
    const std::optional<Bytes> data = platform::userDefaultsData(key);
    if (!data) {
        platform::systemLog("No bookmark data found for key: " + key);
        return {};
    }
    platform::ResolvedBookmark resolved = platform::resolveBookmark(*data, kResolveWithSecurityScope);
    if (!resolved.startAccess)
        platform::systemLog("Error resolving bookmark data: " + resolved.error);
    return resolved;
}

bool isByte(const nlohmann::json &value)
{
    return value.is_number_integer() && value >= 0 && value <= std::numeric_limits<unsigned char>::max();
}

/// The elements of an array of byte arrays; nothing when the text is anything else, or too long.
std::optional<std::vector<Bytes>> byteArraysIn(const std::string &json)
{
    // The parser takes a NUL for the end, whatever follows.
    if (json.size() > kMaxSharedText || json.find('\0') != std::string::npos)
        return std::nullopt;
    const nlohmann::json all = nlohmann::json::parse(json, nullptr, false);
    if (!all.is_array())
        return std::nullopt;
    std::vector<Bytes> arrays;
    for (const nlohmann::json &element : all) {
        if (!element.is_array() || !std::all_of(element.begin(), element.end(), isByte))
            return std::nullopt;
        arrays.push_back(element.get<Bytes>());
    }
    return arrays;
}

} // namespace

bool MacBookmark::hasBookmark(const std::string &path)
{
    return platform::userDefaultsData(generateBookMarkKey(path)).has_value();
}

bool MacBookmark::createBookmark(const std::string &path)
{
    if (!isPathExist(path))
        return false;
    std::error_code error;
    if (!fs::is_directory(path, error))
        saveToBookMark(fs::path(path).parent_path().string());
    return saveToBookMark(path);
}

bool MacBookmark::openBookmark(const std::string &path)
{
    const platform::ResolvedBookmark resolved = resolveEntry(generateBookMarkKey(path));
    if (!resolved.startAccess)
        return false;
    if (resolved.stale) {
        platform::systemLog("Bookmark data is stale.");
        return false;
    }
    if (!resolved.startAccess()) {
        platform::systemLog("Failed to start accessing security scoped resource.");
        return false;
    }
    return true;
}

bool MacBookmark::closeBookmark(const std::string &path)
{
    const platform::ResolvedBookmark resolved = resolveEntry(generateBookMarkKey(path));
    if (!resolved.startAccess)
        return false;
    resolved.stopAccess();
    return true;
}

bool MacBookmark::deleteBookmark(const std::string &path)
{
    return closeBookmark(path);
}

bool MacBookmark::checkBookmarkForDir(const std::string &dir, bool searchParents)
{
    const fs::path path(dir);
    if (!path.is_absolute())
        return false;
    if (!searchParents)
        return openBookmark(dir);

    for (std::string folder = path.lexically_normal().string(); folder.size() > 1; folder.resize(folder.rfind('/'))) {
        if (folder.back() != '/' && openBookmark(folder))
            return true;
    }
    return false;
}

std::vector<MacBookmark::Entry> MacBookmark::entries()
{
    std::vector<Entry> result;
    for (const auto &[key, data] : platform::userDefaultsWithPrefix(kKeyPrefix)) {
        const auto resolved = platform::resolveBookmark(data, kResolveWithSecurityScope);
        const State state = resolved.stale ? State::stale : State::valid;
        result.push_back({key.substr(sizeof kKeyPrefix - 1), resolved.startAccess ? state : State::unresolvable});
    }
    return result;
}

std::vector<unsigned char> MacBookmark::createSharedBookmark(const std::string &path)
{
    return createData(path, kPlain);
}

bool MacBookmark::openSharedBookmark(const std::vector<unsigned char> &data)
{
    if (data.empty()) {
        platform::systemLog("MacBookmark::openBookmark nullptr");
        return false;
    }
    platform::systemLog("MacBookmark::openBookmark succeed");
    const bool resolved = platform::resolveBookmark(data, kPlain).startAccess != nullptr;
    platform::systemLog(resolved ? "MacBookmark::openBookmark succeed okokok"
                                 : "Failed to start accessing security scoped resource 288.");
    return true;
}

std::string MacBookmark::createSharedBookmarkJson(std::vector<std::string> paths)
{
    nlohmann::json bookmarks = nlohmann::json::array();
    for (const std::string &path : paths)
        bookmarks.push_back(createSharedBookmark(path));
    return bookmarks.dump();
}

bool MacBookmark::parseSharedBookmarkJson(const std::string &json)
{
    const std::optional<std::vector<Bytes>> bookmarks = byteArraysIn(json);
    for (const Bytes &bookmark : bookmarks.value_or(std::vector<Bytes>()))
        openSharedBookmark(bookmark);
    return bookmarks.has_value();
}

std::string MacBookmark::generateBookMarkKey(const std::string &path)
{
    const bool dropSlash = path.size() >= 2 && path.back() == '/';
    return kKeyPrefix + path.substr(0, path.size() - (dropSlash ? 1 : 0));
}

bool MacBookmark::saveToBookMark(const std::string &path)
{
    const std::string key = generateBookMarkKey(path);
    // An entry is never renewed, not even a stale one: callers rely on the first grant staying in place.
    if (platform::userDefaultsData(key))
        return true;
    const Bytes data = createData(path, kCreateWithSecurityScope);
    if (data.empty())
        return false;

    platform::setUserDefaultsData(key, data);
    platform::synchroniseUserDefaults();
    const bool stored = platform::userDefaultsData(key).has_value();
    if (!stored)
        platform::systemLog("Error creating bookmark: the entry cannot be stored, " + path);
    return stored;
}
