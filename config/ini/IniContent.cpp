#include "config/ini/IniContent_p.h"

#include <QByteArrayList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStringList>
#include <algorithm>
#include <unordered_map>

namespace ini {

namespace {

using View = std::string_view;

constexpr View kByteOrderMark = "\xEF\xBB\xBF";
constexpr View kLineEnds = "\r\n";
constexpr View kBlanks = " \t";
constexpr View kBetweenLines = " \t\r\n";
constexpr View kSpaces = " \t\n\v\f\r";
constexpr View kCodes = "abfnrtv\"\\?'"; // behind a backslash
constexpr View kMeanings = "\a\b\f\n\r\t\v\"\\?'";
constexpr std::size_t kWritten = 9; // of them; the others are only read
constexpr int kMaxParts = 1 << 16; // each takes some ninety bytes of memory
constexpr qint64 kMaxOfKeys = 4 << 20; // characters, or four for each byte of the file; keys repeat their section
constexpr std::size_t kPiece = 1 << 16; // of raw text that is decoded at a time
constexpr int kFourNumbers = 4 * 12; // what their digits, signs and blanks take at most

View viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// The standard library's own search calls memchr for each character.
bool has(View characters, char c)
{
    std::size_t at = 0;
    while (at < characters.size() && characters[at] != c)
        ++at;
    return at < characters.size();
}

std::size_t find(View text, View characters, std::size_t at)
{
    while (at < text.size() && !has(characters, text[at]))
        ++at;
    return at;
}

std::size_t skip(View text, View characters, std::size_t at)
{
    while (at < text.size() && has(characters, text[at]))
        ++at;
    return at;
}

View trimmed(View text, View blanks)
{
    text.remove_prefix(skip(text, blanks, 0));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::size_t startOf(View bytes)
{
    return bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
}

/// Whether a line end of two characters stands there.
bool isPair(View bytes, std::size_t at)
{
    const View pair = bytes.substr(std::min(at, bytes.size()), 2);
    return pair == "\r\n" || pair == "\n\r";
}

/// 16 for what is no digit.
unsigned digit(char c)
{
    const char lower = static_cast<char>(c | 0x20);
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a' + 10) : 16;
}

QLatin1String latin1(View bytes)
{
    return QLatin1String(bytes.data(), static_cast<int>(bytes.size()));
}

/// The name of a section or a key.
void appendName(QString &text, View name)
{
    const std::size_t plain = find(name, "%\\", 0);
    text += latin1(name.substr(0, plain));
    for (name.remove_prefix(plain); !name.empty(); name.remove_prefix(1)) {
        if (name.front() == '%') {
            const std::size_t size = name.substr(0, 2) == "%U" ? 4 : 2;
            const View digits = name.substr(size / 2, size);
            bool isCode = false;
            const int code = QByteArray(digits.data(), static_cast<int>(digits.size())).toInt(&isCode, 16);
            if (isCode && digits.size() == size) {
                text += QChar(static_cast<ushort>(code));
                name.remove_prefix(size / 2 + size - 1);
                continue;
            }
        }
        text += QLatin1Char(name.front() == '\\' ? '/' : name.front());
    }
}

QByteArray encodedName(const QString &name)
{
    QByteArray result;
    for (const QChar c : name) {
        if (c == QLatin1Char('/'))
            result += '\\';
        else if (c.unicode() <= 0xFF)
            result += QByteArray(1, c.toLatin1()).toPercentEncoding({}, "~");
        else
            result += "%U" + QByteArray::number(c.unicode(), 16).toUpper().rightJustified(4, '0');
    }
    return result;
}

/// What keys of a section begin with: nothing, or its name and "/".
void appendSection(QString &text, View header)
{
    const std::size_t mark = header.substr(0, 1) == "%" ? 1 : 0;
    const bool isGeneral = header.size() == mark + 7 && qstrnicmp(header.data() + mark, "general", 7) == 0;
    if (isGeneral && mark == 0)
        return;
    appendName(text, header.substr(isGeneral ? mark : 0));
    text += QLatin1Char('/');
}

QByteArray headerOf(const QString &section)
{
    if (section.isEmpty())
        return "[General]";
    const QByteArray name = encodedName(section.chopped(1));
    return '[' + (name.toLower() == "general" ? '%' + name : name) + ']';
}

/// Walks through the lines that are not empty and no comments, as QSettings cuts them: line ends within quotes and
/// behind a backslash belong to the line.
struct Line
{
    explicit Line(View bytes) : bytes(bytes), end(startOf(bytes)) { }

    /// Moves to the next line; false, and nothing else, when there is none.
    bool next();
    [[nodiscard]] QStringView section() const { return QStringView(text).left(sectionSize); }
    /// The name of a key, without the section; null where there is none that could be asked for: QSettings looks for no
    /// key with a "/" in the general section.
    [[nodiscard]] QStringView decodedName();
    /// Whether it is this one; decodes few that are not.
    [[nodiscard]] bool isNamed(QStringView wanted);
    /// Section and name; who keeps it makes the next one copy the section.
    [[nodiscard]] QString key() { return decodedName().isNull() ? QString() : text; }

    View bytes;
    std::size_t begin = 0;
    std::size_t end; // in front of the line end, behind a comment
    QString text; // the section, and behind it the name that was asked for last
    int sectionSize = 0;
    View name; // of a key
    View value;
    bool isHeader = false;
    bool isMalformed = false;
    bool isOpen = false; // the file ends within quotes or behind a backslash: what followed would be part of the line
};

bool Line::next()
{
    std::size_t at = skip(bytes, kBetweenLines, end);
    while (at < bytes.size() && bytes[at] == ';')
        at = skip(bytes, kBetweenLines, find(bytes, kLineEnds, at));
    if (at >= bytes.size())
        return false;
    begin = at;
    bool isQuoted = false;
    bool isEscaped = false; // at the end of the file
    std::size_t equals = View::npos;
    for (; at < bytes.size(); ++at) {
        const char c = bytes[at];
        if (c > '\\') // most characters
            continue;
        if (c == '"')
            isQuoted = !isQuoted;
        else if (c == '=' && !isQuoted)
            equals = std::min(equals, at);
        else if (c == '\\') {
            at = std::min(at + (isPair(bytes, at + 1) ? 2 : 1), bytes.size() - 1);
            isEscaped = at + 1 == bytes.size();
        } else if (!isQuoted && (c == '\n' || c == '\r' || c == ';'))
            break;
    }
    isOpen = isQuoted || isEscaped;
    end = find(bytes, kLineEnds, at);
    const View whole = bytes.substr(begin, at - begin);
    isHeader = whole.front() == '[';
    isMalformed = isHeader ? whole.find(']') == View::npos : equals == View::npos;
    name = value = View();
    if (isHeader) {
        text.clear();
        appendSection(text, trimmed(whole.substr(1, whole.find(']') - 1), kSpaces));
        sectionSize = text.size();
    } else if (!isMalformed) {
        name = trimmed(whole.substr(0, equals - begin), kBlanks);
        value = whole.substr(equals - begin + 1);
    }
    return true;
}

QStringView Line::decodedName()
{
    if (isHeader || isMalformed)
        return {};
    text.truncate(sectionSize);
    appendName(text, name);
    return sectionSize == 0 && text.contains(QLatin1Char('/')) ? QStringView() : QStringView(text).mid(sectionSize);
}

bool Line::isNamed(QStringView wanted)
{
    const auto bytes = static_cast<qsizetype>(name.size()); // "%U20AC" is the longest way to write a character
    return bytes >= wanted.size() && bytes <= 6 * wanted.size() && decodedName() == wanted;
}

/// What stands behind a backslash.
QString takeEscape(View raw, std::size_t &at)
{
    const char code = at < raw.size() ? raw[at++] : 'x';
    if (const std::size_t known = kCodes.find(code); known != View::npos)
        return QChar(QLatin1Char(kMeanings[known]));
    const bool isHex = code == 'x' && at < raw.size() && digit(raw[at]) < 16;
    if (isHex || digit(code) < 8) {
        unsigned number = isHex ? 0 : digit(code);
        const unsigned base = isHex ? 16 : 8;
        for (; at < raw.size() && digit(raw[at]) < base; ++at)
            number = (number * base + digit(raw[at])) & 0xFFFFU;
        return QChar(static_cast<ushort>(number));
    }
    if (isPair(raw, at - 1))
        ++at;
    return {};
}

/// The next piece of raw text, which ends between two characters if it is UTF-8.
View takePiece(View &rest)
{
    std::size_t size = std::min(rest.size(), kPiece);
    for (int i = 0; i < 3 && size < rest.size() && (static_cast<unsigned char>(rest[size]) & 0xC0U) == 0x80; ++i)
        --size;
    const View piece = rest.substr(0, size);
    rest.remove_prefix(size);
    return piece;
}

bool isUtf8Text(View run)
{
    constexpr QChar mark = QChar::ReplacementCharacter; // for what is no UTF-8, but for those that stand there
    while (!run.empty()) {
        const View piece = takePiece(run);
        const auto size = static_cast<int>(piece.size());
        const QString text = QString::fromUtf8(piece.data(), size);
        if (text.contains(mark)
            && text.count(mark) != QByteArray::fromRawData(piece.data(), size).count("\xEF\xBF\xBD"))
            return false;
    }
    return true;
}

/// Raw bytes. QSettings of Qt 5 writes none beyond ASCII; that of Qt 6 writes UTF-8, as people do. Piece by piece, so
/// that nothing but the text itself takes memory.
void appendRaw(QString &text, View run, bool isUtf8)
{
    isUtf8 = isUtf8 || isUtf8Text(run);
    while (!run.empty()) {
        const View piece = takePiece(run);
        if (!isUtf8) {
            text += latin1(piece);
            continue;
        }
        if (startOf(piece) > 0) // which Qt takes for no part of the text
            text += QChar(QChar::ByteOrderMark);
        text += QString::fromUtf8(piece.data(), static_cast<int>(piece.size()));
    }
}

/// The parts of a value, which end at commas outside of quotes; one if it is no list, or too long for one.
QStringList partsOf(View raw, bool isUtf8, bool isList = true)
{
    QStringList parts;
    QString text;
    int kept = 0; // blanks in front of this are not taken off the end
    bool isQuoted = false;
    bool wasQuoted = false;
    const auto endPart = [&] {
        while (text.size() > kept && has(kBlanks, text.back().toLatin1()))
            text.chop(1);
        parts += text;
        text.clear();
        wasQuoted = false;
    };
    std::size_t at = skip(raw, kBlanks, 0);
    while (at < raw.size()) {
        const char c = raw[at++];
        if (c == '\\') {
            text += takeEscape(raw, at);
            kept = text.size();
        } else if (c == '"') {
            wasQuoted = true;
            isQuoted = !isQuoted;
            at = isQuoted || !isList ? at : skip(raw, kBlanks, at);
            kept = text.size();
        } else if (c == ',' && isList && !isQuoted) {
            if (parts.size() == kMaxParts) {
                parts.clear();
                return partsOf(raw, isUtf8, false);
            }
            endPart();
            at = skip(raw, kBlanks, at);
            kept = 0;
        } else {
            const View run = raw.substr(at - 1, find(raw, "\\\",", at) - at + 1);
            appendRaw(text, run, isUtf8);
            at += run.size() - 1;
            kept = isQuoted || (wasQuoted && isList) ? text.size() : kept;
        }
    }
    endPart();
    return parts;
}

std::optional<QVariant> variantOf(QString text)
{
    const QStringView tag = QStringView(text).left(text.indexOf(QLatin1Char('(')) + 1);
    if (text.startsWith(QLatin1Char('@')) && !tag.isEmpty() && text.endsWith(QLatin1Char(')'))) {
        const auto tagSize = static_cast<int>(tag.size());
        const QStringView inside = QStringView(text).mid(tagSize).chopped(1);
        const bool isShort = inside.size() < kFourNumbers && !inside.contains(QLatin1Char(')'));
        const QStringList parts = isShort ? inside.toString().split(QLatin1Char(' ')) : QStringList();
        const auto number = [&parts](int i) { return parts[i].toInt(); };
        if (tag == QLatin1String("@Variant(") || tag == QLatin1String("@DateTime("))
            return std::nullopt;
        if (tag == QLatin1String("@Rect(") && parts.size() == 4)
            return QRect(number(0), number(1), number(2), number(3));
        if (tag == QLatin1String("@Size(") && parts.size() == 2)
            return QSize(number(0), number(1));
        if (tag == QLatin1String("@Point(") && parts.size() == 2)
            return QPoint(number(0), number(1));
        if (text == QLatin1String("@Invalid()"))
            return QVariant();
        if (const bool isBytes = tag == QLatin1String("@ByteArray("); isBytes || tag == QLatin1String("@String(")) {
            text.chop(1);
            text.remove(0, tagSize); // where it stands, since it may be long
            return isBytes ? QVariant(std::move(text).toLatin1()) : text;
        }
    }
    return text.startsWith(QLatin1String("@@")) ? text.remove(0, 1) : text;
}

std::optional<QVariant> variantOf(QStringList parts)
{
    if (parts.size() == 1)
        return variantOf(parts.takeFirst());
    QVariantList list;
    bool isPlain = true;
    for (QString &text : parts) {
        isPlain = isPlain && (!text.startsWith(QLatin1Char('@')) || text.startsWith(QLatin1String("@@")));
        const std::optional<QVariant> part = variantOf(std::move(text));
        if (!part)
            return std::nullopt;
        list += *part;
    }
    return isPlain ? QVariant(QVariant(list).toStringList()) : QVariant(list);
}

bool isList(const QVariant &value)
{
    return value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QStringList;
}

/// The text that stands for a value which is no list.
std::optional<QString> textFor(const QVariant &value)
{
    const QRect rect = value.toRect();
    const QSize size = value.toSize();
    const QPoint point = value.toPoint();
    const QByteArray bytes = value.toByteArray();
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return QStringLiteral("@Invalid()");
    case QMetaType::QByteArray:
        return QLatin1String("@ByteArray(") + QString::fromLatin1(bytes.constData(), bytes.size()) + QLatin1Char(')');
    case QMetaType::QRect:
        return QString::asprintf("@Rect(%d %d %d %d)", rect.x(), rect.y(), rect.width(), rect.height());
    case QMetaType::QSize:
        return QString::asprintf("@Size(%d %d)", size.width(), size.height());
    case QMetaType::QPoint:
        return QString::asprintf("@Point(%d %d)", point.x(), point.y());
    default:
        break;
    }
    if (isList(value) || !value.canConvert<QString>())
        return std::nullopt;
    const QString text = value.toString();
    if (text.contains(QChar::Null))
        return QLatin1String("@String(") + text + QLatin1Char(')');
    return text.startsWith(QLatin1Char('@')) ? QLatin1Char('@') + text : text;
}

QByteArray encodedText(const QString &text)
{
    QByteArray result;
    bool needsQuotes = text.startsWith(QLatin1Char(' ')) || text.endsWith(QLatin1Char(' '));
    bool isBehindNumber = false; // which a digit would make longer
    for (const QChar c : text) {
        const char plain = c.unicode() < 0x7F ? static_cast<char>(c.unicode()) : '\x01';
        const std::size_t known = kMeanings.substr(0, kWritten).find(plain);
        const bool isNumber = known == View::npos && (plain < ' ' || (isBehindNumber && digit(plain) < 16));
        needsQuotes = needsQuotes || has(";,=", plain);
        if (isNumber)
            result += plain == '\0' ? QByteArray("\\0") : "\\x" + QByteArray::number(c.unicode(), 16);
        else if (known != View::npos)
            result.append('\\').append(kCodes[known]);
        else
            result += plain;
        isBehindNumber = isNumber;
    }
    return needsQuotes ? '"' + result + '"' : result;
}

using Word = std::u16string_view;

Word wordOf(QStringView text)
{
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

/// What takes the place of some bytes of a file.
struct Edit
{
    std::size_t size = 0;
    QByteArray text;
};

} // namespace

/// The raw values, by section and name: both together may take the square of what the file has.
struct Content::Index
{
    /// Words stay where they are: none has more characters than bytes in the file.
    explicit Index(const QByteArray &bytes) { words.reserve(bytes.size()); }

    Word kept(QStringView text) { return wordOf(QStringView(words += text).right(text.size())); }

    QString words;
    std::unordered_map<Word, std::unordered_map<Word, View>> sections;
};

Content::Content(QByteArray bytes, bool isUtf8)
    : m_bytes(std::move(bytes)), m_isUtf8(isUtf8 || startOf(viewOf(m_bytes)) > 0)
{
}

void Content::makeIndex()
{
    if (m_index)
        return;
    const auto index = std::make_shared<Index>(m_bytes);
    auto *section = &index->sections[Word()];
    for (Line line(viewOf(m_bytes)); line.next();) {
        if (line.isHeader)
            section = &index->sections[index->kept(line.section())];
        else if (const QStringView name = line.decodedName(); !name.isNull())
            (*section)[index->kept(name)] = line.value;
    }
    m_index = index;
}

QStringList Content::keys() const
{
    QStringList keys;
    qint64 room = std::max(kMaxOfKeys, 4 * qint64{m_bytes.size()});
    for (Line line(viewOf(m_bytes)); line.next();) {
        const QString key = line.key();
        if ((room -= key.size()) < 0)
            break;
        if (!key.isEmpty())
            keys += QString(key.constData(), key.size()); // a copy, or the next one would have to be
    }
    return keys;
}

std::optional<View> Content::find(const QString &key) const
{
    const QString normal = normalized(key);
    const QStringView wanted(normal);
    std::optional<View> found;
    if (wanted.isEmpty())
        return found;
    if (!m_index) {
        bool isIn = true; // a section that the key may be of
        for (Line line(viewOf(m_bytes)); line.next();) {
            if (line.isHeader)
                isIn = wanted.startsWith(line.section());
            else if (isIn && line.isNamed(wanted.mid(line.sectionSize)))
                found = line.value;
        }
        return found;
    }
    const Word all = wordOf(wanted);
    std::size_t size = all.find(u'/') + 1; // of the section, which may have "/" in its name
    do {
        const auto section = m_index->sections.find(all.substr(0, size));
        if (section != m_index->sections.end()) {
            const auto name = section->second.find(all.substr(size));
            if (name != section->second.end() && (!found || name->second.data() > found->data()))
                found = name->second;
        }
        size = all.find(u'/', size) + 1;
    } while (size > 0);
    return found;
}

bool Content::contains(const QString &key) const
{
    return find(key).has_value();
}

std::optional<QVariant> Content::value(const QString &key) const
{
    const std::optional<View> raw = find(key);
    return raw ? variantOf(partsOf(*raw, m_isUtf8)) : std::nullopt;
}

QVariant Content::value(const QString &key, const QVariant &defaultValue) const
{
    return value(key).value_or(defaultValue);
}

std::optional<QString> Content::text(const QString &key) const
{
    const std::optional<View> raw = find(key);
    QStringList parts = raw ? partsOf(*raw, m_isUtf8) : QStringList();
    if (parts.size() > 1) {
        parts.clear(); // both may be long
        return partsOf(*raw, m_isUtf8, false).takeFirst();
    }
    const std::optional<QVariant> value = parts.isEmpty() ? std::nullopt : variantOf(std::move(parts));
    return value ? std::optional(value->toString()) : std::nullopt;
}

void Content::forEach(const std::function<void(const Entry &)> &visit) const
{
    const View bytes = viewOf(m_bytes);
    std::size_t counted = 0;
    int number = 1;
    for (Line line(bytes); line.next();) {
        for (; counted < line.begin; ++counted)
            number += bytes[counted] == '\n' || (bytes[counted] == '\r' && bytes[counted + 1] != '\n') ? 1 : 0;
        const QString key = line.key();
        if (!key.isNull())
            visit({number, key, variantOf(partsOf(line.value, m_isUtf8))});
        else if (!line.isHeader || line.isMalformed)
            visit({number, key, {}});
    }
}

QByteArray Content::with(const Changes &changes) const
{
    constexpr std::size_t nowhere = View::npos;
    const View bytes = viewOf(m_bytes);
    const auto sectionIn = [](const QString &key) { return key.left(key.indexOf(QLatin1Char('/')) + 1); };
    QMap<QString, std::size_t> ends; // of the sections in which something is set
    for (auto change = changes.begin(); change != changes.end(); ++change)
        ends[sectionIn(change.key())] = nowhere;
    QHash<QString, View> old;
    std::size_t end = bytes.size();
    Line line(bytes);
    auto section = ends.find(QString());
    bool isIn = section != ends.end(); // what is set may be of it
    while (line.next()) {
        if (line.isHeader) {
            const QString name = line.section().toString();
            section = ends.find(name);
            isIn = ends.contains(sectionIn(name));
        }
        const QString key = isIn ? line.key() : QString();
        const bool isSet = changes.contains(key);
        if (isSet)
            old[key] = trimmed(line.value, kBlanks);
        if (line.isOpen && !isSet)
            end = line.begin;
        else if (section != ends.end() && !has(kLineEnds, bytes[line.end - 1])) // nor is a pair made of an escaped one
            *section = line.end;
    }

    const QByteArray lineEnd = m_bytes.contains("\r\n") ? "\r\n" : "\n";
    QMap<std::size_t, Edit> edits; // by place
    QMap<QString, QByteArray> added; // by section, a line end in front of each line
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        const QString section = sectionIn(change.key());
        if (const auto found = old.constFind(change.key()); found != old.constEnd())
            edits[static_cast<std::size_t>(found->data() - bytes.data())] = {found->size(), *change};
        else
            added[section] += lineEnd + encodedName(change.key().mid(section.size())) + '=' + *change;
    }
    QByteArray sections;
    for (auto lines = added.begin(); lines != added.end(); ++lines) {
        if (ends[lines.key()] != nowhere) {
            edits[ends[lines.key()]].text += *lines; // or behind an empty value
            continue;
        }
        if (!sections.isEmpty() || end > startOf(bytes))
            sections += !sections.isEmpty() || has(kLineEnds, bytes[end - 1]) ? lineEnd : lineEnd + lineEnd;
        sections += headerOf(lines.key()) + *lines + lineEnd;
    }
    if (!sections.isEmpty() && end < bytes.size() && !line.isHeader)
        sections += lineEnd + headerOf(line.section().toString()) + lineEnd;
    edits[end].text += sections;

    QByteArray result;
    std::size_t done = 0;
    for (auto edit = edits.begin(); edit != edits.end(); ++edit) {
        result.append(bytes.data() + done, static_cast<int>(edit.key() - done)).append(edit->text);
        done = edit.key() + edit->size;
    }
    return result.append(bytes.data() + done, static_cast<int>(bytes.size() - done));
}

std::optional<QByteArray> stored(const QVariant &value)
{
    QByteArrayList parts;
    for (const QVariant &part : isList(value) ? value.toList() : QVariantList{value}) {
        const std::optional<QString> text = textFor(part);
        if (!text)
            return std::nullopt;
        parts += encodedText(*text);
    }
    return parts.isEmpty() ? "@Invalid()" : parts.join(", ");
}

std::optional<QVariant> read(const QByteArray &stored)
{
    return variantOf(partsOf(viewOf(stored), false));
}

int number(const QVariant &value)
{
    return static_cast<int>(value.toLongLong());
}

QString text(const QVariant &value)
{
    return isList(value) ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}

QString normalized(const QString &key)
{
    constexpr QLatin1Char slash('/');
    bool isClean = !key.startsWith(slash) && !key.endsWith(slash);
    for (int i = 1; i < key.size(); ++i)
        isClean = isClean && (key[i] != slash || key[i - 1] != slash);
    return isClean ? key : key.split(slash, Qt::SkipEmptyParts).join(slash);
}

} // namespace ini
