#include "config/IniFile_p.h"

#include "config/WriteTurn_p.h"
#include "paths/RegularFile_p.h"

#include <QFile>
#include <QLockFile>
#include <QSaveFile>
#include <QStringList>
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <map>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <tuple>

namespace ini {

namespace {

constexpr int kMaxSize = 16 << 20;
constexpr int kLockTimeout = 5000; // milliseconds

/// What lies at a path; `other` is also a file that is too large. Not asked through std::filesystem, which takes the
/// path apart first.
enum class Kind { file, nothing, other };

struct Found
{
    Kind kind;
    struct stat status;
};

Found look(const QString &path, int (*ask)(const char *, struct stat *))
{
    Found found{};
    if (ask(QFile::encodeName(path).constData(), &found.status) == 0)
        found.kind = S_ISREG(found.status.st_mode) && found.status.st_size <= kMaxSize ? Kind::file : Kind::other;
    else
        found.kind = errno == ENOENT || errno == ENOTDIR ? Kind::nothing : Kind::other;
    return found;
}

/// The file that QSettings locks its writes with.
QString lockPath(const QString &path)
{
    return path + QStringLiteral(".lock");
}

struct Range
{
    int begin = -1;
    int end = -1;
};

/// Where a key's value stands in a file, and where its section begins. Sections that appear twice are one, and of keys
/// that do the last one counts, as in QSettings.
struct Place
{
    Range value;
    int sectionBegin = -1; // behind the line that opens it
};

Range trimmed(const QByteArray &bytes, Range range)
{
    const auto isBlank = [&bytes](int at) { return bytes[at] == ' ' || bytes[at] == '\t' || bytes[at] == '\r'; };
    while (range.begin < range.end && isBlank(range.begin))
        ++range.begin;
    while (range.begin < range.end && isBlank(range.end - 1))
        --range.end;
    return range;
}

QByteArray in(const QByteArray &bytes, Range range)
{
    return QByteArray::fromRawData(bytes.constData() + range.begin, range.end - range.begin);
}

Place find(const QByteArray &bytes, const QByteArray &section, const QByteArray &key)
{
    Place place;
    bool isInside = false;
    int next = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    while (next < bytes.size()) {
        const int newline = bytes.indexOf('\n', next);
        const Range range = trimmed(bytes, {next, newline < 0 ? static_cast<int>(bytes.size()) : newline});
        next = newline < 0 ? bytes.size() : newline + 1;

        const QByteArray line = in(bytes, range);
        if (line.startsWith('[')) {
            isInside = line.mid(1, line.indexOf(']') - 1).trimmed() == section;
            if (isInside)
                place.sectionBegin = next;
            continue;
        }
        const int equals = line.indexOf('=');
        if (isInside && equals >= 0 && line.left(equals).trimmed() == key)
            place.value = trimmed(bytes, {range.begin + equals + 1, range.end});
    }
    return place;
}

std::optional<QByteArray> bytesOf(const QString &path)
{
    FileContent content = readRegularFile(QFile::encodeName(path).toStdString(), kMaxSize);
    return content.isRead() ? std::optional(std::move(content.bytes)) : std::nullopt;
}

/// The bytes without quotes and line ends, and with characters in place of their escapes: in it, texts stand as
/// QSettings has them before it looks what kind of value they are.
QByteArray unescaped(const QByteArray &bytes)
{
    QByteArray text;
    text.reserve(bytes.size());
    for (int at = 0; at < bytes.size(); ++at) {
        const char c = bytes[at];
        if (c != '\\') {
            if (c != '"' && c != '\r' && c != '\n')
                text += c;
            continue;
        }
        const bool isHex = at + 1 < bytes.size() && bytes[at + 1] == 'x';
        const int begin = at + (isHex ? 2 : 1);
        int end = begin;
        while (end < bytes.size() && (isHex ? std::isxdigit(bytes[end]) != 0 : bytes[end] >= '0' && bytes[end] <= '7'))
            ++end;
        // QSettings keeps the last bits of a number that is too large.
        const QByteArray digits = bytes.mid(begin, end - begin).right(isHex ? 2 : 3);
        if (!digits.isEmpty())
            text += static_cast<char>(digits.toUInt(nullptr, isHex ? 16 : 8));
        at = std::max(end - 1, at + 1); // other escapes stand for nothing, or for what is in no mark
    }
    return text;
}

/// Whether a value, or a part of a list, begins with the mark of a serialized one. Texts that begin so are written with
/// a second "@".
bool hasSerialized(const QByteArray &text)
{
    for (int at = text.indexOf("@Variant("); at >= 0; at = text.indexOf("@Variant(", at + 1)) {
        if (at == 0 || std::strchr("=, \t", text[at - 1]))
            return true;
    }
    return false;
}

/// Whether no text of the file stands for a serialized value. QSettings unpacks these whatever they say, without limit
/// to their depth and to the lengths that they claim, and thereby ends the process.
bool isPlain(const QString &path, const struct stat &status)
{
    // A file that was plain is not read again until it changes.
    using Identity = std::tuple<dev_t, ino_t, off_t, time_t, time_t>;
    static std::mutex mutex;
    static auto &plainFiles = *new std::map<QString, Identity>; // outlives every static that asks

    const Identity identity{status.st_dev, status.st_ino, status.st_size, status.st_mtime, status.st_ctime};
    const std::lock_guard<std::mutex> lock(mutex);
    const auto known = plainFiles.find(path);
    if (known != plainFiles.end() && known->second == identity)
        return true;
    const QByteArray bytes = bytesOf(path).value_or(QByteArray());
    const bool hasNone = !(bytes.contains('@') || bytes.contains('\\')) || !hasSerialized(unescaped(bytes));
    if (hasNone)
        plainFiles[path] = identity;
    return hasNone;
}

/// The commas of a raw value that stand outside of quotes, each with the blanks around it.
QStringList separators(const QByteArray &raw)
{
    QStringList found;
    bool isQuoted = false;
    for (int at = 0; at < raw.size(); ++at) {
        if (raw[at] == '\\')
            ++at;
        else if (raw[at] == '"')
            isQuoted = !isQuoted;
        else if (raw[at] == ';' && !isQuoted)
            break; // the rest is a comment
        else if (raw[at] == ',' && !isQuoted) {
            Range comma{at, at + 1};
            while (comma.begin > 0 && (raw[comma.begin - 1] == ' ' || raw[comma.begin - 1] == '\t'))
                --comma.begin;
            while (comma.end < raw.size() && (raw[comma.end] == ' ' || raw[comma.end] == '\t'))
                ++comma.end;
            found += QString::fromLatin1(in(raw, comma));
            at = comma.end - 1;
        }
    }
    return found;
}

bool isList(const QVariant &value)
{
    return value.userType() == QMetaType::QStringList || value.userType() == QMetaType::QVariantList;
}

QString rejoined(const QStringList &parts, const QStringList &between)
{
    QString text = parts.first();
    for (int i = 1; i < parts.size(); ++i)
        text += between[i - 1] + parts[i];
    return text;
}

} // namespace

QString readable(const QString &path)
{
    const Found found = look(path, &::stat);
    const bool is = found.kind == Kind::file && isPlain(path, found.status);
    return is ? path : QStringLiteral(":/ondpdftoolutils/no-file");
}

bool isWritable(const QString &path)
{
    // QLockFile would wait for good for what is no file to go away.
    if (path.isEmpty() || look(lockPath(path), &::lstat).kind == Kind::other)
        return false;
    const Found found = look(path, &::stat);
    return found.kind == Kind::nothing || (found.kind == Kind::file && isPlain(path, found.status));
}

QString text(const QSettings &settings, const QString &key, const QString &defaultValue)
{
    const QVariant value = settings.value(key); // a default costs time, in and out of the variant
    if (!value.isValid())
        return defaultValue;
    if (!isList(value))
        return value.toString();
    const QByteArray bytes = bytesOf(settings.fileName()).value_or(QByteArray());
    const QByteArray name = key.toUtf8();
    const int slash = name.indexOf('/');
    const Range raw = find(bytes, name.left(slash), name.mid(slash + 1)).value;
    const QStringList between = separators(raw.begin < 0 ? QByteArray() : in(bytes, raw));
    const QStringList parts = value.toStringList();
    return between.size() == parts.size() - 1 ? rejoined(parts, between) : text(value);
}

QString text(const QVariant &value)
{
    return isList(value) ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}

void change(const QString &path, const std::function<void(QSettings &)> &set)
{
    if (!isWritable(path))
        return;
    const WriteTurn turn(path.toStdString());
    QSettings settings(path, QSettings::IniFormat);
    set(settings);
    settings.sync();
}

bool setValue(const QString &path, const QByteArray &section, const QByteArray &key, const QByteArray &value)
{
    if (!isWritable(path))
        return false;
    const WriteTurn turn(path.toStdString());
    QLockFile lockOfQSettings(lockPath(path));
    if (!lockOfQSettings.tryLock(kLockTimeout))
        return false;

    const std::optional<QByteArray> old = bytesOf(path);
    if (!old && QFile::exists(path))
        return false;
    QByteArray bytes = old.value_or(QByteArray());
    const QByteArray newline = bytes.contains("\r\n") ? "\r\n" : "\n";
    const QByteArray line = key + '=' + value + newline;
    if (!bytes.isEmpty() && !bytes.endsWith('\n'))
        bytes += newline;
    const Place place = find(bytes, section, key);
    if (place.value.begin >= 0)
        bytes.replace(place.value.begin, place.value.end - place.value.begin, value);
    else if (place.sectionBegin >= 0)
        bytes.insert(place.sectionBegin, line);
    else
        bytes += '[' + section + ']' + newline + line;

    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace ini
