#pragma once

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace ini {

/// Values to set: by key, in the form in which they stand in a file (stored()).
using Changes = QMap<QString, QByteArray>;

/// One line of a file: a value, or what is none.
struct Entry
{
    int line; ///< From 1.
    QString key; ///< Null for a line that holds nothing which could be asked for.
    std::optional<QVariant> value; ///< Nothing for a value that would have to be unpacked.
};

/// What an INI file says, in the format that QSettings of Qt 5 reads and writes, whichever Qt is at hand: a key is
/// "section/name", or "name" in the general section; the section ends at the first "/". Sections that stand twice are
/// one, and of a key that does the last one counts. Raw bytes of a value are UTF-8, which QSettings of Qt 6 writes; a
/// run of them that is none is Latin-1, unless the file begins with a byte-order mark or `isUtf8`. Those of names, of
/// which neither writes any, are Latin-1.
///
/// Any bytes will do. A serialized value ("@Variant(...)", "@DateTime(...)") is not unpacked, since what it claims to
/// hold may end the process: it reads as absent, and that is its matter alone. A list of more than 65,537 parts is a
/// text. To find a value takes a walk through the file, and at most twice the memory of the value and of the longest
/// name of a section (four times to look at all values, or for bytes as a text); each part of a list takes some ninety
/// bytes besides. Const members may be called from any thread.
class Content
{
public:
    explicit Content(QByteArray bytes = {}, bool isUtf8 = false);

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

    /// Finds values at once from now on, without a walk; takes some ten times the memory of the file.
    void makeIndex();

    /// Whether there is a value of this key, be it one that is not unpacked.
    [[nodiscard]] bool contains(const QString &key) const;
    /// The value as QSettings has it.
    [[nodiscard]] std::optional<QVariant> value(const QString &key) const;
    [[nodiscard]] QVariant value(const QString &key, const QVariant &defaultValue) const;
    /// The value as one text; what QSettings takes for a list, since it has commas and no quotes, with its commas and
    /// the blanks around them.
    [[nodiscard]] std::optional<QString> text(const QString &key) const;
    /// All keys and their values, those that are not unpacked without one. Takes many times the memory of the file.
    [[nodiscard]] QMap<QString, std::optional<QVariant>> values() const;
    void forEach(const std::function<void(const Entry &)> &visit) const;

    /// The file with these values set and every other byte as it stands: new keys at the end of their section, new
    /// sections at the end of the file.
    [[nodiscard]] QByteArray with(const Changes &changes) const;

private:
    [[nodiscard]] std::optional<std::string_view> find(const QString &key) const;

    QByteArray m_bytes;
    bool m_isUtf8;
    std::shared_ptr<const QHash<QString, std::string_view>> m_index;
};

/// How a value stands in a file. Texts, numbers and lists of them, bytes, points, sizes and rectangles are what
/// QSettings would write; other types stand as the text that QVariant has for them. Nothing for a value that has none
/// (a map).
[[nodiscard]] std::optional<QByteArray> stored(const QVariant &value);
/// What stored() stands for.
[[nodiscard]] std::optional<QVariant> read(const QByteArray &stored);
/// A value as an int: 0 for what is no integer, the lower 32 bits of one that is too large.
[[nodiscard]] int number(const QVariant &value);
/// A value as a text; a list's parts are joined by ",".
[[nodiscard]] QString text(const QVariant &value);
/// The key without needless "/", as QSettings takes it; may be empty.
[[nodiscard]] QString normalized(const QString &key);

} // namespace ini
