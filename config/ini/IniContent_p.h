#pragma once

#include <QByteArray>
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
/// name of a section (four times to change one, or for bytes as a text); each part of a list takes some ninety bytes
/// besides. Const members may be called from any thread.
class Content
{
public:
    explicit Content(QByteArray bytes = {}, bool isUtf8 = false);

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

    /// Finds values at once from now on, without a walk; takes up to twenty times the memory of the file.
    void makeIndex();
    /// The keys in the order of the file, some more than once, as far as all together, each with the name of its
    /// section, have at most four million characters, or four for each byte of the file: lines of a section with a long
    /// name would take the square of what the file has.
    [[nodiscard]] QStringList keys() const;

    /// Whether there is a value of this key, be it one that is not unpacked.
    [[nodiscard]] bool contains(const QString &key) const;
    /// The value as QSettings has it.
    [[nodiscard]] std::optional<QVariant> value(const QString &key) const;
    [[nodiscard]] QVariant value(const QString &key, const QVariant &defaultValue) const;
    /// The value as one text; what QSettings takes for a list, since it has commas and no quotes, with its commas and
    /// the blanks around them.
    [[nodiscard]] std::optional<QString> text(const QString &key) const;
    /// Visits the lines in their order; who keeps a key makes the next one copy the name of the section.
    void forEach(const std::function<void(const Entry &)> &visit) const;

    /// The file with these values set and every other byte as it stands: new keys at the end of their section, new
    /// sections at the end of the file.
    [[nodiscard]] QByteArray with(const Changes &changes) const;

private:
    struct Index;

    [[nodiscard]] std::optional<std::string_view> find(const QString &key) const;

    QByteArray m_bytes;
    bool m_isUtf8;
    std::shared_ptr<const Index> m_index;
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
