#include "paths/platform/generic/PropertyList_p.h"

#include "paths/RegularFile_p.h"
#include "paths/platform/generic/BinaryPropertyList_p.h"

#include <cstdint>
#include <memory>
#include <plist/plist.h>

namespace platform::generic {

namespace {

constexpr int kMaxSize = 1 << 20;
/// More than an Info.plist has. libplist deletes what it read with one call per level on the stack, and moves the rest
/// of a text for each entity in it.
constexpr int kMaxContainers = 4096;
constexpr int kMaxEntities = 4096;

struct FreePlist
{
    void operator()(void *node) const { plist_free(node); }
};

std::string textInXml(const QByteArray &bytes, const std::string &key)
{
    // Counted wherever they stand: in a comment they count as well, but cannot hide others.
    if (bytes.count("<dict") + bytes.count("<array") > kMaxContainers || bytes.count('&') > kMaxEntities)
        return {};
    plist_t parsed = nullptr;
    plist_from_xml(bytes.constData(), static_cast<std::uint32_t>(bytes.size()), &parsed);
    const std::unique_ptr<void, FreePlist> root(parsed);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT)
        return {};
    plist_t value = plist_dict_get_item(root.get(), key.c_str());
    if (!value || plist_get_node_type(value) != PLIST_STRING)
        return {};

    // Not with plist_get_string_val(), which ends the process when the text has a NUL.
    std::uint64_t size = 0;
    const char *text = plist_get_string_ptr(value, &size);
    return text ? std::string(text, size) : std::string();
}

} // namespace

std::string propertyListText(const std::string &path, const std::string &key)
{
    return textInPropertyList(readRegularFile(path, kMaxSize).bytes, key);
}

std::string textInPropertyList(const QByteArray &bytes, const std::string &key)
{
    std::string text;
    if (bytes.startsWith(BinaryPropertyList::kSignature))
        text = BinaryPropertyList(bytes).text(QString::fromStdString(key)).value_or(QString()).toStdString();
    else if (!bytes.isEmpty())
        text = textInXml(bytes, key);
    return text.find('\0') == std::string::npos ? text : std::string(); // a path would end there
}

} // namespace platform::generic
