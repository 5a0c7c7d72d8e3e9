#include "config/ini/IniContent_p.h"

#include <QByteArrayList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStringList>
#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>
#include <vector>

namespace ini {

namespace {

using View = std::string_view;

constexpr View kByteOrderMark = "\xEF\xBB\xBF";
constexpr View kLineEnds = "\r\n";
constexpr View kBlanks = " \t";
constexpr View kBetweenLines = " \t\r\n";
constexpr View kSpaces = " \t\n\v\f\r";

constexpr View kGeneral = "general";

View viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

std::size_t startOf(View bytes)
{
    return bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
}

/// The standard library calls memchr for each character.
bool has(View characters, char c)
{
    for (const char each : characters) {
        if (each == c)
            return true;
    }
    return false;
}

std::size_t skip(View text, View characters, std::size_t at)
{
    while (at < text.size() && has(characters, text[at]))
        ++at;
    return at;
}

std::size_t find(View text, View characters, std::size_t at)
{
    while (at < text.size() && !has(characters, text[at]))
        ++at;
    return at;
}

View trimmed(View text, View blanks)
{
    text.remove_prefix(skip(text, blanks, 0));
    while (!text.empty() && has(blanks, text.back()))
        text.remove_suffix(1);
    return text;
}

struct Special
{
    constexpr Special()
    {
        for (const char c : {'\n', '\r', '"', ';', '=', '\\'})
            is[static_cast<unsigned char>(c)] = true;
    }

    bool is[256] = {};
};

bool isSpecial(char c)
{
    static constexpr Special special;
    return special.is[static_cast<unsigned char>(c)];
}

bool isHex(char c)
{
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

bool isPair(View bytes, std::size_t at)
{
    return at + 1 < bytes.size() && has(kLineEnds, bytes[at]) && has(kLineEnds, bytes[at + 1])
        && bytes[at] != bytes[at + 1];
}

/// Takes the first character off the name of a section or a key.
QChar takeCharacter(View &name)
{
    const char first = name.front();
    name.remove_prefix(1);
    if (first == '\\')
        return QLatin1Char('/');
    if (first != '%' || name.empty())
        return QLatin1Char(first);
    const std::size_t begin = name.front() == 'U' ? 1 : 0;
    const std::size_t digits = begin == 1 ? 4 : 2;
    if (name.size() < begin + digits)
        return QLatin1Char('%');
    bool isNumber = false;
    const int code = QByteArray(name.data() + begin, static_cast<int>(digits)).toInt(&isNumber, 16);
    if (!isNumber)
        return QLatin1Char('%');
    name.remove_prefix(begin + digits);
    return QChar(static_cast<ushort>(code));
}

bool isSame(View name, QStringView text)
{
    if (name.size() < static_cast<std::size_t>(text.size())) // an escape is longer than what it stands for
        return false;
    return std::all_of(text.begin(), text.end(), [&](QChar c) { return !name.empty() && takeCharacter(name) == c; })
        && name.empty();
}

QString decodedName(View name)
{
    QString text;
    while (!name.empty())
        text += takeCharacter(name);
    return text;
}

bool isGeneral(View section)
{
    return section.size() == kGeneral.size() && qstrnicmp(section.data(), kGeneral.data(), kGeneral.size()) == 0;
}

/// What keys of a section begin with.
QString prefixOf(View section)
{
    if (isGeneral(section))
        return {};
    if (!section.empty() && section.front() == '%' && isGeneral(section.substr(1)))
        section.remove_prefix(1);
    return decodedName(section) + QLatin1Char('/');
}

/// What is left of a key behind the name of a section; empty when it lies elsewhere.
QStringView restIn(View section, QStringView key)
{
    if (isGeneral(section))
        return key;
    if (!section.empty() && section.front() == '%' && isGeneral(section.substr(1)))
        section.remove_prefix(1);
    for (; !section.empty(); key = key.mid(1)) {
        if (key.isEmpty() || takeCharacter(section) != key.front())
            return {};
    }
    return !key.isEmpty() && key.front() == QLatin1Char('/') ? key.mid(1) : QStringView();
}

/// A line, as QSettings cuts it: line ends within quotes and behind a backslash belong to it.
struct Line
{
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t next = 0; // behind the mark and the comment that end it
    View name; // of a key
    View value; // has no data where the line has no "="
    View section = kGeneral; // the name in the last header
    bool isHeader = false;
    bool isMalformed = false;
    bool isOpen =
        false; // the file ends within quotes or behind a backslash, so that a line behind it would be part of it
};

/// Moves to the next line that is not empty and no comment. False when there is none.
bool advance(View bytes, Line &line)
{
    std::size_t at = std::max(line.next, startOf(bytes));
    for (at = skip(bytes, kBetweenLines, at); at < bytes.size() && bytes[at] == ';';)
        at = skip(bytes, kBetweenLines, find(bytes, kLineEnds, at));
    if (at >= bytes.size())
        return false;
    line.begin = at;
    std::size_t equals = View::npos;
    bool isQuoted = false;
    line.isOpen = false;
    for (; at < bytes.size(); ++at) {
        if (!isSpecial(bytes[at]))
            continue;
        if (bytes[at] == '"')
            isQuoted = !isQuoted;
        else if (bytes[at] == '=' && !isQuoted)
            equals = std::min(equals, at);
        else if (bytes[at] == '\\') {
            at += isPair(bytes, at + 1) ? 2 : 1;
            line.isOpen = at + 1 >= bytes.size() && (at >= bytes.size() || has(kLineEnds, bytes[at]));
        } else if (!isQuoted && bytes[at] != '=')
            break; // a line end, or the ";" of a comment
    }
    line.isOpen = line.isOpen || isQuoted;
    line.end = std::min(at, bytes.size());
    at = find(bytes, kLineEnds, line.end);
    line.next = std::min(at + (isPair(bytes, at) ? 2 : 1), bytes.size());

    const View whole = bytes.substr(line.begin, line.end - line.begin);
    line.isHeader = whole.front() == '[';
    line.isMalformed = line.isHeader ? whole.find(']') == View::npos : equals == View::npos;
    line.name = line.value = View();
    if (line.isHeader)
        line.section = trimmed(whole.substr(1, whole.find(']') - 1), kSpaces);
    else if (!line.isMalformed) {
        line.name = trimmed(bytes.substr(line.begin, equals - line.begin), kBlanks);
        line.value = bytes.substr(equals + 1, line.end - equals - 1);
    }
    return true;
}

/// The parts of a value, and what stands between them: the commas outside of quotes, with the blanks around them.
struct Parts
{
    QStringList texts;
    QStringList between;
};

Parts partsOf(View raw, bool isUtf8)
{
    constexpr View codes = "abfnrtv\"?'\\";
    constexpr View meanings = "\a\b\f\n\r\t\v\"?'\\";
    Parts parts;
    QString text;
    int kept = 0; // what blanks at the end are not taken off from
    bool isQuoted = false;
    bool wasQuoted = false;
    std::size_t at = 0;
    const auto skipBlanks = [&] {
        at = std::min(raw.find_first_not_of(kBlanks, at), raw.size());
        kept = text.size();
    };
    const auto endPart = [&] {
        while (!wasQuoted && text.size() > kept && has(kBlanks, text.back().toLatin1()))
            text.chop(1);
        parts.texts += text;
        text.clear();
        wasQuoted = false;
    };
    const auto addNumber = [&](unsigned base) {
        unsigned code = 0;
        for (; at < raw.size() && (base == 16 ? isHex(raw[at]) : raw[at] >= '0' && raw[at] < '8'); ++at)
            code = (code * base + (raw[at] <= '9' ? raw[at] - '0' : (raw[at] | 0x20) - 'a' + 10)) & 0xFFFFU;
        text += QChar(static_cast<ushort>(code));
    };
    skipBlanks();
    while (at < raw.size()) {
        const char c = raw[at];
        if (c == '\\') {
            const char code = ++at < raw.size() ? raw[at++] : 'x';
            if (has(codes, code))
                text += QLatin1Char(meanings[codes.find(code)]);
            else if (code == 'x' && at >= raw.size())
                wasQuoted = true; // blanks before it stay
            else if (code == 'x' && isHex(raw[at]))
                addNumber(16);
            else if (code >= '0' && code < '8') {
                --at;
                addNumber(8);
            } else if (isPair(raw, at - 1))
                ++at;
            kept = text.size();
        } else if (c == '"') {
            ++at;
            wasQuoted = true;
            isQuoted = !isQuoted;
            if (!isQuoted)
                skipBlanks();
        } else if (c == ',' && !isQuoted) {
            const std::size_t begin = raw.find_last_not_of(kBlanks, at - 1) + 1;
            endPart();
            ++at;
            skipBlanks();
            parts.between += QString::fromLatin1(raw.data() + begin, static_cast<int>(at - begin));
        } else {
            const std::size_t end = std::min(raw.find_first_of("\\\",", at + 1), raw.size());
            const int size = static_cast<int>(end - at);
            text += isUtf8 ? QString::fromUtf8(raw.data() + at, size) : QString::fromLatin1(raw.data() + at, size);
            at = end;
        }
    }
    endPart();
    return parts;
}

/// What "@Name(...)" holds.
std::optional<QString> within(const QString &text, const char *name)
{
    const QLatin1String begin(name);
    if (!text.startsWith(begin) || !text.endsWith(QLatin1Char(')')))
        return std::nullopt;
    return text.mid(begin.size(), text.size() - begin.size() - 1);
}

std::optional<QVariant> variantOf(const QString &text)
{
    if (!text.startsWith(QLatin1Char('@')))
        return text;
    if (within(text, "@Variant(") || within(text, "@DateTime("))
        return std::nullopt;
    if (const auto bytes = within(text, "@ByteArray("))
        return bytes->toLatin1();
    if (const auto plain = within(text, "@String("))
        return *plain;
    if (text == QLatin1String("@Invalid()"))
        return QVariant();
    const auto numbers = [&text](const char *name) {
        std::vector<int> found;
        QString number;
        for (const QChar c : within(text, name).value_or(QString()) + QLatin1Char(')')) {
            if (c == QLatin1Char(' ') || c == QLatin1Char(')'))
                found.push_back(number.toInt());
            if (c == QLatin1Char(' '))
                number.clear();
            else if (c != QLatin1Char(')'))
                number += c;
        }
        return found;
    };
    if (const std::vector<int> rect = numbers("@Rect("); rect.size() == 4)
        return QRect(rect[0], rect[1], rect[2], rect[3]);
    if (const std::vector<int> size = numbers("@Size("); size.size() == 2)
        return QSize(size[0], size[1]);
    if (const std::vector<int> point = numbers("@Point("); point.size() == 2)
        return QPoint(point[0], point[1]);
    return text.startsWith(QLatin1String("@@")) ? text.mid(1) : text;
}

std::optional<QVariant> variantOf(const Parts &parts)
{
    if (parts.between.isEmpty())
        return variantOf(parts.texts.first());
    QVariantList list;
    bool isPlain = true;
    for (const QString &text : parts.texts) {
        const std::optional<QVariant> part = variantOf(text);
        if (!part)
            return std::nullopt;
        isPlain = isPlain && (!text.startsWith(QLatin1Char('@')) || text.startsWith(QLatin1String("@@")));
        list += *part;
    }
    return isPlain ? QVariant(QVariant(list).toStringList()) : QVariant(list);
}

/// The text that stands for a value which is no list.
std::optional<QString> textFor(const QVariant &value)
{
    const auto tagged = [](const char *name, const QString &text) {
        return QLatin1String(name) + text + QLatin1Char(')');
    };
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return QStringLiteral("@Invalid()");
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return tagged("@ByteArray(", QString::fromLatin1(bytes.constData(), bytes.size()));
    }
    case QMetaType::QRect: {
        const QRect rect = value.toRect();
        return QString::asprintf("@Rect(%d %d %d %d)", rect.x(), rect.y(), rect.width(), rect.height());
    }
    case QMetaType::QSize:
        return QString::asprintf("@Size(%d %d)", value.toSize().width(), value.toSize().height());
    case QMetaType::QPoint:
        return QString::asprintf("@Point(%d %d)", value.toPoint().x(), value.toPoint().y());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return std::nullopt;
    default:
        break;
    }
    if (!value.canConvert<QString>())
        return std::nullopt;
    const QString text = value.toString();
    if (text.contains(QChar::Null))
        return tagged("@String(", text);
    return text.startsWith(QLatin1Char('@')) ? QLatin1Char('@') + text : text;
}

QByteArray encodedText(const QString &text)
{
    constexpr View special("\0\a\b\f\n\r\t\v\"\\", 10);
    constexpr View codes = "0abfnrtv\"\\";
    QByteArray result;
    bool needsQuotes = text.startsWith(QLatin1Char(' ')) || text.endsWith(QLatin1Char(' '));
    bool isBehindNumber = false;
    for (const QChar c : text) {
        const char plain = c.unicode() < 0x7F ? static_cast<char>(c.unicode()) : '\x01';
        needsQuotes = needsQuotes || has(";,=", plain);
        const std::size_t known = special.find(plain);
        if (known != View::npos)
            result.append('\\').append(codes[known]);
        else if (plain < ' ' || (isBehindNumber && isHex(plain)))
            result.append("\\x").append(QByteArray::number(c.unicode(), 16));
        else
            result.append(plain);
        isBehindNumber = plain == '\0' || (known == View::npos && (plain < ' ' || (isBehindNumber && isHex(plain))));
    }
    return needsQuotes ? '"' + result + '"' : result;
}

QByteArray encodedName(QStringView name)
{
    QByteArray result;
    for (const QChar c : name) {
        const ushort code = c.unicode();
        if (code < 0x80 && (std::isalnum(code) || has("_-.", static_cast<char>(code))))
            result += static_cast<char>(code);
        else if (code == '/')
            result += '\\';
        else
            result += (code <= 0xFF ? "%" : "%U")
                + QByteArray::number(code, 16).toUpper().rightJustified(code <= 0xFF ? 2 : 4, '0');
    }
    return result;
}

QByteArray headerOf(const QString &section)
{
    QByteArray name = section.isEmpty() ? QByteArray("General") : encodedName(section);
    if (section == QLatin1String("General"))
        name.prepend('%');
    else if (section.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0)
        name.replace(0, 1, "%" + name.left(1).toHex());
    return '[' + name + ']';
}

/// A key to set: where its value stands, or behind which line it belongs.
struct Place
{
    QByteArray value;
    View old;
    QString oldSection;
    std::size_t behind = View::npos;
    QString before; // the name on that line, the greatest of those before it
};

using Places = QMap<QString, Place>; // by name

/// A section in which keys are set, and behind which line it belongs if it is new.
struct Section
{
    Places places;
    std::size_t behind = View::npos;
    QString before;
};

using Sections = QMap<QString, Section>; // by name

/// Section and name of a key.
std::pair<QString, QString> split(const QString &key)
{
    const int slash = key.indexOf(QLatin1Char('/'));
    return {key.left(std::max(slash, 0)), key.mid(slash + 1)};
}

struct Edit
{
    std::size_t begin;
    std::size_t size; // of what is replaced
    int order; // of those at one place: what is replaced, lines of a section that there is, new sections
    QByteArray text;
};

QByteArray edited(const QByteArray &bytes, std::vector<Edit> &edits)
{
    std::stable_sort(edits.begin(), edits.end(), [](const Edit &a, const Edit &b) {
        return std::make_pair(a.begin, a.order) < std::make_pair(b.begin, b.order);
    });
    std::size_t size = viewOf(bytes).size();
    for (const Edit &edit : edits)
        size += edit.text.size() + 2;
    QByteArray result;
    result.reserve(static_cast<int>(size));
    std::size_t done = 0;
    for (const Edit &edit : edits) {
        result.append(bytes.constData() + done, static_cast<int>(edit.begin - done));
        if (edit.order > 0 && !result.isEmpty() && result != kByteOrderMark.data() && !has(kLineEnds, result.back()))
            result += '\n';
        result += edit.text;
        done = edit.begin + edit.size;
    }
    return result.append(bytes.constData() + done, bytes.size() - static_cast<int>(done));
}

} // namespace

Content::Content(QByteArray bytes, bool isUtf8)
    : m_bytes(std::move(bytes)), m_isUtf8(isUtf8 || startOf(viewOf(m_bytes)) > 0)
{
}

std::optional<QByteArray> Content::find(const QString &key) const
{
    const QString wanted = normalized(key);
    std::optional<QByteArray> found;
    QString foundIn;
    Line line;
    QStringView rest = wanted; // of the key, in this section; empty if the key cannot be there
    while (advance(viewOf(m_bytes), line)) {
        if (line.isHeader)
            rest = restIn(line.section, wanted);
        else if (!line.isMalformed && !rest.isEmpty() && isSame(line.name, rest)) {
            const QString section = prefixOf(line.section);
            if (section >= foundIn)
                found = QByteArray::fromRawData(line.value.data(), static_cast<int>(line.value.size()));
            foundIn = std::max(section, foundIn);
        }
    }
    return found;
}

bool Content::contains(const QString &key) const
{
    return find(key).has_value();
}

std::optional<QVariant> Content::value(const QString &key) const
{
    const std::optional<QByteArray> raw = find(key);
    return raw ? variantOf(partsOf(viewOf(*raw), m_isUtf8)) : std::nullopt;
}

QVariant Content::value(const QString &key, const QVariant &defaultValue) const
{
    return value(key).value_or(defaultValue);
}

std::optional<QString> Content::text(const QString &key) const
{
    const std::optional<QByteArray> raw = find(key);
    if (!raw)
        return std::nullopt;
    const Parts parts = partsOf(viewOf(*raw), m_isUtf8);
    QString all;
    for (int i = 0; i < parts.texts.size(); ++i) {
        const std::optional<QVariant> part = variantOf(parts.texts[i]);
        if (!part && parts.between.isEmpty())
            return std::nullopt;
        all += (i > 0 ? parts.between[i - 1] : QString()) + ini::text(part.value_or(QVariant()));
    }
    return all;
}

void Content::forEach(const std::function<void(const Entry &)> &visit) const
{
    const View bytes = viewOf(m_bytes);
    Line line;
    QString section;
    std::size_t counted = 0;
    int number = 1;
    while (advance(bytes, line)) {
        if (line.isHeader)
            section = prefixOf(line.section);
        for (; counted < line.begin; ++counted)
            number += bytes[counted] == '\n' || (bytes[counted] == '\r' && bytes[counted + 1] != '\n') ? 1 : 0;
        if (line.isMalformed)
            visit({number, section, {}, {}});
        else if (!line.isHeader)
            visit({number, section, section + decodedName(line.name), variantOf(partsOf(line.value, m_isUtf8))});
    }
}

QMap<QString, std::optional<QVariant>> Content::values() const
{
    QMap<QString, std::optional<QVariant>> values;
    QMap<QString, QString> sections;
    forEach([&](const Entry &entry) {
        if (entry.key.isNull() || entry.section < sections.value(entry.key))
            return;
        values[entry.key] = entry.value;
        sections[entry.key] = entry.section;
    });
    return values;
}

QByteArray Content::with(const Changes &changes) const
{
    Sections sections;
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        const auto [section, name] = split(change.key());
        sections[section].places[name].value = change.value();
    }

    const View bytes = viewOf(m_bytes);
    const std::size_t start = startOf(bytes);
    bool isHeadless = false; // lines of the general section come first, without saying so
    std::size_t sectionBegin = View::npos;
    QString prefix;
    QString current;
    auto own = sections.find(current);
    auto following = sections.upperBound(current);
    Line line;
    while (advance(bytes, line)) {
        QString name;
        if (line.isHeader) {
            sectionBegin = line.begin;
            prefix = prefixOf(line.section);
            current = prefix.left(prefix.size() - 1);
            own = prefix == QLatin1String("/") ? sections.end() : sections.find(current);
            following = sections.upperBound(current);
        } else if (!line.isMalformed) {
            isHeadless = isHeadless || sectionBegin == View::npos;
            name = decodedName(line.name);
            const QString key = prefix + name;
            const auto [section, rest] = split(key);
            const auto found = key.startsWith(QLatin1Char('/')) ? sections.end() : sections.find(section);
            const auto place = found == sections.end() ? Places::iterator() : found->places.find(rest);
            // QSettings does not look into the general section for a key of another one.
            if (found != sections.end() && place != found->places.end() && prefix >= place->oldSection
                && (section.isEmpty() || !prefix.isEmpty())) {
                place->old = trimmed(line.value, kBlanks);
                place->oldSection = prefix;
            }
        }
        if (following != sections.end() && following->before <= current) {
            following->behind = line.isOpen ? sectionBegin : line.next; // in front of it: nothing, if it has no header
            following->before = current;
        }
        if (own == sections.end() || line.isOpen || line.isMalformed)
            continue;
        const auto next = own->places.upperBound(name);
        if (next != own->places.end() && next->before <= name) {
            next->behind = line.next;
            next->before = name;
        }
    }

    const QByteArray lineEnd = m_bytes.contains("\r\n") ? "\r\n" : "\n";
    std::vector<Edit> edits;
    std::size_t newSections = start;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        std::size_t behind = section.key().isEmpty() && isHeadless ? start : View::npos;
        bool isNew = false;
        for (auto place = section->places.begin(); place != section->places.end(); ++place) {
            if (place->old.data()) {
                const auto begin = static_cast<std::size_t>(place->old.data() - bytes.data());
                edits.push_back({begin, place->old.size(), 0, place->value});
                continue;
            }
            QByteArray text = encodedName(place.key()) + '=' + place->value + lineEnd;
            behind = place->behind == View::npos ? behind : place->behind;
            if (behind == View::npos) {
                isNew = true;
                behind = newSections = section->behind == View::npos ? newSections : section->behind;
                text.prepend(headerOf(section.key()) + lineEnd);
                if (behind > start || (bytes.size() == start && !edits.empty()))
                    text.prepend(lineEnd);
            }
            edits.push_back({behind, 0, isNew ? 2 : 1, text});
        }
        if (isNew && newSections == start && start < bytes.size())
            edits.back().text += (isHeadless ? "[General]" : "") + lineEnd;
    }
    return edited(m_bytes, edits);
}

std::optional<QByteArray> stored(const QVariant &value)
{
    const bool isList = value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QStringList;
    if (!isList || value.toList().isEmpty()) {
        const std::optional<QString> text = textFor(isList ? QVariant() : value);
        return text ? std::optional(encodedText(*text)) : std::nullopt;
    }
    QByteArrayList parts;
    for (const QVariant &part : value.toList()) {
        const std::optional<QString> text = textFor(part);
        if (!text)
            return std::nullopt;
        parts += encodedText(*text);
    }
    return parts.join(", ");
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
    const bool isList = value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QStringList;
    return isList ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}

QString normalized(const QString &key)
{
    return key.split(QLatin1Char('/'), Qt::SkipEmptyParts).join(QLatin1Char('/'));
}

} // namespace ini
