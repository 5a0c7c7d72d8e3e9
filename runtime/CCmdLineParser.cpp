#include "runtime/CCmdLineParser.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

namespace {

QString toText(const wchar_t *text)
{
    QString utf16(2 * static_cast<int>(std::wcslen(text)), Qt::Uninitialized);
    QChar *end = utf16.data();
    for (; *text; ++text) {
        const auto c = static_cast<char32_t>(*text);
        if (!QChar::requiresSurrogates(c)) {
            *end++ = static_cast<ushort>(c);
        } else if (c <= QChar::LastValidCodePoint) {
            *end++ = QChar::highSurrogate(c);
            *end++ = QChar::lowSurrogate(c);
        } else {
            *end++ = QChar::ReplacementCharacter; // could become any character otherwise, delimiters included
        }
    }
    utf16.truncate(static_cast<int>(end - utf16.constData()));
    return utf16;
}

template <std::size_t Count>
const QChar *findAnyOf(const QChar *begin, const QChar *end, const wchar_t (&characters)[Count])
{
    return std::find_first_of(begin, end, std::begin(characters), std::end(characters),
                              [](QChar c, wchar_t wanted) { return wchar_t(c.unicode()) == wanted; });
}

} // namespace

CCmdLineParser::CCmdLineParser(const wchar_t *cmdLine, bool matchCase) : m_bMatchCase(matchCase)
{
    Parse(cmdLine);
}

CCmdLineParser::~CCmdLineParser() = default;

bool CCmdLineParser::Parse(const wchar_t *cmdLine)
{
    if (!cmdLine)
        return false;
    m_sFullLine = toText(cmdLine);
    m_keyValues.clear();

    const QChar *const end = m_sFullLine.cend();
    for (const QChar *cur = m_sFullLine.cbegin(); cur != end;) {
        const QChar *const delimiter = findAnyOf(cur, end, m_sDelimeters);
        if (delimiter == end)
            break;
        const QChar *const name = delimiter + 1;
        const QChar *const separator = findAnyOf(name, end, m_sValueSep);
        if (separator == end || *separator == QLatin1Char(' ') || separator + 1 == end) {
            insert({name, separator}, {});
            cur = separator == end ? end : separator + 1;
            continue;
        }

        const bool isQuoted = separator[1].unicode() == m_sQuotes[0];
        const QChar *const value = separator + (isQuoted ? 2 : 1);
        const QChar *const valueEnd = std::find(value, end, QLatin1Char(isQuoted ? '"' : ' '));
        insert({name, separator}, {value, valueEnd});
        cur = valueEnd == end ? end : valueEnd + 1;
    }
    return !m_keyValues.empty();
}

void CCmdLineParser::insert(QStringView key, QStringView value)
{
    if (key.isEmpty())
        return;
    QString text = key.toString();
    m_keyValues.try_emplace(m_bMatchCase ? text : std::move(text).toLower(), value.toString());
}

bool CCmdLineParser::HasKey(const wchar_t *key) const
{
    return findKey(key) != m_keyValues.end();
}

bool CCmdLineParser::HasVal(const wchar_t *key) const
{
    return !GetVal(key).isEmpty();
}

QString CCmdLineParser::GetVal(const wchar_t *key) const
{
    QString value;
    GetVal(key, value);
    return value;
}

bool CCmdLineParser::GetVal(const wchar_t *key, QString &value) const
{
    const auto found = findKey(key);
    if (found == m_keyValues.end())
        return false;
    value = found->second;
    return true;
}

int CCmdLineParser::GetIntVal(const wchar_t *key, int defaultValue) const
{
    const QString value = GetVal(key);
    return value.isEmpty() ? defaultValue : value.toInt();
}

CCmdLineParser::const_iterator CCmdLineParser::getFirst() const
{
    return m_keyValues.begin();
}

CCmdLineParser::const_iterator CCmdLineParser::getNext(const_iterator &it, QString &key, QString &value) const
{
    if (isLast(it)) {
        key.clear();
        return it;
    }
    key = it->first;
    value = it->second;
    return ++it;
}

bool CCmdLineParser::isLast(const const_iterator &it) const
{
    return it == m_keyValues.end();
}

CCmdLineParser::const_iterator CCmdLineParser::findKey(const wchar_t *key) const
{
    if (!key)
        return m_keyValues.end();
    const QString text = toText(key);
    return m_keyValues.find(m_bMatchCase ? text : text.toLower());
}
