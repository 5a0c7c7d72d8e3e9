#include "runtime/CCmdLineParser.h"
#include "tests/fuzz/Target.h"

#include <algorithm>
#include <string_view>

constexpr auto npos = std::wstring_view::npos;

/// The grammar once more, in the plainest way.
static CCmdLineParser::KeyValues switchesOf(std::wstring_view rest, bool matchCase)
{
    CCmdLineParser::KeyValues switches;
    const auto cut = [&rest](std::size_t end) {
        const std::wstring_view head = rest.substr(0, end);
        rest.remove_prefix(end == npos ? rest.size() : end + 1);
        return QString::fromWCharArray(head.data(), static_cast<int>(head.size()));
    };
    while (rest.find_first_of(L"-/") != npos) {
        cut(rest.find_first_of(L"-/"));
        const std::size_t separator = rest.find_first_of(L" :=");
        const bool hasValue = separator != npos && rest[separator] != L' ';
        const QString key = cut(separator);
        const bool isQuoted = hasValue && rest.substr(0, 1) == L"\"";
        if (isQuoted)
            cut(0);
        const QString value = hasValue ? cut(rest.find(isQuoted ? L'"' : L' ')) : QString();
        if (!key.isEmpty())
            switches.try_emplace(matchCase ? key : key.toLower(), value);
    }
    return switches;
}

/// Whatever the line, the parser finds what the plain grammar does, and nothing else.
static void check(const std::wstring &line, bool matchCase)
{
    const CCmdLineParser parser(line.c_str(), matchCase);
    auto it = parser.getFirst();
    std::wstring valid(line, 0, line.find(L'\0'));
    std::replace_if(
        valid.begin(), valid.end(), [](wchar_t c) { return c > 0x10FFFF; }, L'\uFFFD');
    for (const auto &[key, value] : switchesOf(valid, matchCase)) {
        QString parsedKey, parsedValue;
        parser.getNext(it, parsedKey, parsedValue);
        require(parsedKey == key && parsedValue == value);
    }
    require(parser.isLast(it));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // Bytes as they are reach the grammar quickly; shifted ones reach other planes, surrogates and what is no code
    // point.
    std::wstring line(data, data + size);
    check(line, false);
    for (std::size_t i = 1; i < line.size(); i += 2)
        line[i] |= wchar_t(data[i - 1]) << (data[i - 1] % 2 == 0 ? 13 : 11);
    check(line, true);
    return 0;
}
