#include "paths/MacBookmark.h"

#include "config/GlobalConfigFile.h"
#include "paths/platform/Bookmark_p.h"
#include "paths/platform/SystemLog_p.h"
#include "paths/platform/UserDefaults_p.h"

#include <filesystem>
#include <functional>
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
/// Far above what anybody shares, and few enough for the log lines that each of them writes.
constexpr int kMaxSharedBookmarks = 100'000;

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

/// Reads an array of arrays of bytes as a stream, so that neither a deep nor a large text costs memory. Anything else
/// ends the reading.
class ByteArrayReader : public nlohmann::json_sax<nlohmann::json>
{
public:
    explicit ByteArrayReader(const std::function<void(const Bytes &)> &element) : m_element(element) { }

    bool start_array(std::size_t /*elements*/) override
    {
        m_bytes.clear();
        return ++m_depth <= 2;
    }
    bool end_array() override
    {
        if (--m_depth == 0)
            return true;
        m_element(m_bytes);
        return ++m_elements <= kMaxSharedBookmarks;
    }
    bool number_unsigned(number_unsigned_t value) override
    {
        m_bytes.push_back(static_cast<unsigned char>(value));
        return m_depth == 2 && value <= std::numeric_limits<unsigned char>::max();
    }
    bool number_integer(number_integer_t value) override { return value == 0 && number_unsigned(0); } // "-0"

    bool null() override { return false; }
    bool boolean(bool /*value*/) override { return false; }
    bool number_float(number_float_t /*value*/, const string_t & /*text*/) override { return false; }
    bool string(string_t & /*value*/) override { return false; }
    bool binary(binary_t & /*value*/) override { return false; }
    bool start_object(std::size_t /*elements*/) override { return false; }
    bool key(string_t & /*value*/) override { return false; }
    bool end_object() override { return false; }
    bool parse_error(std::size_t /*at*/, const std::string & /*token*/,
                     const nlohmann::detail::exception & /*error*/) override
    {
        return false;
    }

private:
    const std::function<void(const Bytes &)> &m_element;
    Bytes m_bytes;
    int m_depth = 0;
    int m_elements = 0;
};

/// Calls `element` for each element as it is read; whether the text was an array of byte arrays to its end.
bool readByteArrays(const std::string &json, const std::function<void(const Bytes &)> &element)
{
    ByteArrayReader reader(element);
    // The parser takes a NUL for the end, whatever follows.
    return json.find('\0') == std::string::npos && nlohmann::json::sax_parse(json, &reader);
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
    // Read twice: nothing may be opened before all of it is known to be sound.
    return readByteArrays(json, [](const Bytes &) {})
        && readByteArrays(json, [](const Bytes &bookmark) { openSharedBookmark(bookmark); });
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
