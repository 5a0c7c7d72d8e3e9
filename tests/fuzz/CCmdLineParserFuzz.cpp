#include "runtime/CCmdLineParser.h"

#include <cstdint>
#include <cstdlib>
#include <set>

namespace {

/// Whatever the line, walking over its switches ends, and each has a name of its own.
void check(const std::wstring &line, bool matchCase)
{
    const CCmdLineParser parser(line.c_str(), matchCase);
    std::set<QString> keys;
    QString key;
    QString value;
    for (auto it = parser.getFirst(); !parser.isLast(it);) {
        parser.getNext(it, key, value);
        if (key.isEmpty() || !keys.insert(key).second || !parser.HasKey(key.toStdWString().c_str()))
            std::abort();
    }
}

} // namespace

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
