#include "paths/platform/generic/PropertyList_p.h"

#include "paths/RegularFile_p.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <plist/plist.h>

namespace platform::generic {

namespace {

constexpr int kMaxSize = 1 << 20;

struct FreePlist
{
    void operator()(void *node) const { plist_free(node); }
};

} // namespace

std::string propertyListText(const std::string &path, const std::string &key)
{
    const QByteArray bytes = readRegularFile(path, kMaxSize).bytes;
    if (bytes.isEmpty())
        return {};

    plist_t parsed = nullptr;
    plist_from_memory(bytes.constData(), static_cast<std::uint32_t>(bytes.size()), &parsed);
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
