#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace platform::generic {

/// A property list in the binary format: objects, a table of where each begins, and a trailer that says where the table
/// is. Reads what the top dictionary names, and follows nothing further: in a few hundred bytes, objects that hold each
/// other can stand for a tree that no memory holds.
class BinaryPropertyList
{
public:
    static constexpr char kSignature[] = "bplist00";

    explicit BinaryPropertyList(QByteArray bytes);

    /// The text under the first key `key` of the top dictionary; nothing when there is none, or when the list is
    /// malformed where that was looked for.
    [[nodiscard]] std::optional<QString> text(const QString &key) const;

private:
    struct Object
    {
        int type;
        quint64 count;
        quint64 begin;
    };

    [[nodiscard]] bool holds(quint64 begin, quint64 count, quint64 size) const;
    [[nodiscard]] quint64 number(quint64 begin, int size) const;
    [[nodiscard]] std::optional<Object> object(quint64 reference) const;
    [[nodiscard]] std::optional<QString> textOf(const Object &object) const;

    QByteArray m_bytes;
    quint64 m_end = 0; // of all but the trailer
    int m_offsetSize = 0;
    int m_referenceSize = 0;
    quint64 m_objects = 0;
    quint64 m_top = 0;
    quint64 m_table = 0;
};

} // namespace platform::generic
