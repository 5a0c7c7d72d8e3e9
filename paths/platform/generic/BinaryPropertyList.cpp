#include "paths/platform/generic/BinaryPropertyList_p.h"

#include <utility>

namespace platform::generic {

namespace {

constexpr int kTrailerSize = 32;

// The upper half of an object's first byte.
constexpr int kInteger = 0x1;
constexpr int kAscii = 0x5;
constexpr int kUtf16 = 0x6;
constexpr int kDictionary = 0xd;
/// The lower half says how much an object holds, or that an integer follows that does.
constexpr int kCountFollows = 0xf;

} // namespace

BinaryPropertyList::BinaryPropertyList(QByteArray bytes) : m_bytes(std::move(bytes))
{
    if (!m_bytes.startsWith(kSignature) || m_bytes.size() < kTrailerSize + static_cast<int>(sizeof kSignature))
        return;
    m_end = static_cast<quint64>(m_bytes.size() - kTrailerSize);
    m_offsetSize = static_cast<int>(number(m_end + 6, 1));
    m_referenceSize = static_cast<int>(number(m_end + 7, 1));
    m_table = number(m_end + 24, 8);
    const quint64 objects = number(m_end + 8, 8);
    const bool isSound = m_offsetSize >= 1 && m_offsetSize <= 8 && m_referenceSize >= 1 && m_referenceSize <= 8
        && holds(m_table, objects, static_cast<quint64>(m_offsetSize));
    m_objects = isSound ? objects : 0;
    m_top = number(m_end + 16, 8);
}

std::optional<QString> BinaryPropertyList::text(const QString &key) const
{
    const std::optional<Object> top = object(m_top);
    const auto size = static_cast<quint64>(m_referenceSize);
    // All references to keys come before all to values.
    if (!top || top->type != kDictionary || !holds(top->begin, top->count, 2 * size))
        return std::nullopt;
    for (quint64 i = 0; i < top->count; ++i) {
        const std::optional<Object> name = object(number(top->begin + i * size, m_referenceSize));
        // Not unpacked when longer: a large text may be the name of every entry.
        if (!name || name->count != static_cast<quint64>(key.size()) || textOf(*name) != key)
            continue;
        const std::optional<Object> value = object(number(top->begin + (top->count + i) * size, m_referenceSize));
        return value ? textOf(*value) : std::nullopt;
    }
    return std::nullopt;
}

/// Whether `count` pieces of `size` bytes lie there, size being small.
bool BinaryPropertyList::holds(quint64 begin, quint64 count, quint64 size) const
{
    return begin <= m_end && count <= (m_end - begin) / size;
}

quint64 BinaryPropertyList::number(quint64 begin, int size) const
{
    quint64 value = 0;
    for (int i = 0; i < size; ++i)
        value = value << 8 | static_cast<unsigned char>(m_bytes[static_cast<int>(begin) + i]);
    return value;
}

std::optional<BinaryPropertyList::Object> BinaryPropertyList::object(quint64 reference) const
{
    if (reference >= m_objects)
        return std::nullopt;
    const quint64 at = number(m_table + reference * static_cast<quint64>(m_offsetSize), m_offsetSize);
    if (!holds(at, 1, 1))
        return std::nullopt;
    const quint64 marker = number(at, 1);
    Object object{static_cast<int>(marker >> 4), marker & 0xf, at + 1};
    if (object.count != kCountFollows)
        return object;
    if (!holds(object.begin, 1, 1))
        return std::nullopt;
    const quint64 countMarker = number(object.begin++, 1);
    const int size = 1 << (countMarker & 0xf);
    if (countMarker >> 4 != kInteger || size > 8 || !holds(object.begin, 1, static_cast<quint64>(size)))
        return std::nullopt;
    object.count = number(object.begin, size);
    object.begin += static_cast<quint64>(size);
    return object;
}

std::optional<QString> BinaryPropertyList::textOf(const Object &object) const
{
    const bool isWide = object.type == kUtf16;
    const int size = isWide ? 2 : 1;
    if ((object.type != kAscii && !isWide) || !holds(object.begin, object.count, static_cast<quint64>(size)))
        return std::nullopt;
    QString text(static_cast<int>(object.count), Qt::Uninitialized);
    for (int i = 0; i < text.size(); ++i)
        text[i] = QChar(static_cast<ushort>(number(object.begin + static_cast<quint64>(i * size), size)));
    return text;
}

} // namespace platform::generic
