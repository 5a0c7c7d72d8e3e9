#include "paths/platform/generic/PropertyList_p.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <plist/plist.h>
#include <vector>

namespace platform::generic {

namespace {

constexpr std::uintmax_t kMaxSize = 1U << 20;

struct FreePlist
{
    void operator()(void *node) const { plist_free(node); }
};

std::vector<char> smallFile(const std::string &path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size == 0 || size > kMaxSize)
        return {};
    std::vector<char> bytes(size);
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

} // namespace

std::string propertyListText(const std::string &path, const std::string &key)
{
    const std::vector<char> bytes = smallFile(path);
    if (bytes.empty())
        return {};

    plist_t parsed = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &parsed);
    const std::unique_ptr<void, FreePlist> root(parsed);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT)
        return {};
    plist_t value = plist_dict_get_item(root.get(), key.c_str());
    if (!value || plist_get_node_type(value) != PLIST_STRING)
        return {};

    char *text = nullptr;
    plist_get_string_val(value, &text);
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    return text ? text : "";
}

} // namespace platform::generic
