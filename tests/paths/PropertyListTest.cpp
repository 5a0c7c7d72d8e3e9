#include "paths/platform/generic/PropertyList_p.h"

#include <gtest/gtest.h>
#include <vector>

using platform::generic::textInPropertyList;

namespace {

std::string bigEndian(std::size_t value, int size)
{
    std::string bytes;
    while (size-- > 0)
        bytes += static_cast<char>(value >> (8 * size));
    return bytes;
}

/// A binary list of these objects, whose references have a byte; the first is on top.
QByteArray binaryList(const std::vector<std::string> &objects)
{
    std::string bytes = "bplist00", table;
    for (const std::string &object : objects) {
        table += bigEndian(bytes.size(), 2);
        bytes += object;
    }
    const std::string trailer = std::string(6, '\0') + "\2\1" + bigEndian(objects.size(), 8) + bigEndian(0, 8);
    return QByteArray::fromStdString(bytes + table + trailer + bigEndian(bytes.size(), 8));
}

/// Arrays that hold the next one twice each: a tree of 2^40 leaves.
QByteArray withTree(std::vector<std::string> objects)
{
    for (std::size_t end = objects.size() + 40; objects.size() < end;)
        objects.push_back("\xa2" + std::string(2, static_cast<char>(objects.size() + 1)));
    // A text of one letter begins with 0x51, "Q"; of two with 0x52.
    objects.emplace_back("Qz");
    return binaryList(objects);
}

QByteArray xmlList(const QByteArray &entries)
{
    return "<plist><dict><key>n</key><string>\u00e4</string>" + entries + "</dict></plist>";
}

QByteArray nested(int depth, const QByteArray &open, const QByteArray &close)
{
    return "<key>deep</key>" + open.repeated(depth) + close.repeated(depth);
}

} // namespace

TEST(PropertyList, TextsComeFromTheTopDictionaryAlone)
{
    const std::string key = "Qn", text = "Rhi", wide("\x61\0\xe4", 3);
    const std::string longText = "\x5f\x11" + bigEndian(300, 2) + std::string(300, 'x');
    const struct
    {
        const char *name;
        QByteArray bytes;
        std::string text;
    } rows[] = {
        {"binary", binaryList({"\xd1\1\2", key, text}), "hi"},
        {"second entry", binaryList({"\xd2\2\1\1\3", key, text, wide}), "\u00e4"},
        {"wide key", binaryList({"\xd1\1\2", std::string("\x61\0n", 3), text}), "hi"},
        {"long text", binaryList({"\xd1\1\2", key, longText}), std::string(300, 'x')},
        {"first of two", binaryList({"\xd2\1\1\2\3", key, text, wide}), "hi"},
        {"tree below", withTree({"\xd2\3\1\4\2", key, text, "Qx"}), "hi"},
        {"tree as the value", withTree({"\xd1\1\2", key}), ""},
        {"tree on top", withTree({}), ""},
        {"the dictionary as its own value", binaryList({std::string("\xd1\1\0", 3), key}), ""},
        {"more entries than bytes", binaryList({"\xdf\x13" + bigEndian(~0ULL / 2, 8), key, text}), ""},
        {"no such object", binaryList({"\xd1\1\x9", key, text}), ""},
        {"text", xmlList(""), "\u00e4"},
        {"NUL", binaryList({"\xd1\1\2", key, std::string("\x52h\0", 3)}), ""},
        {"NUL in a text", QByteArray("<plist><dict><key>n</key><string>h\0i</string></dict></plist>", 55), ""},
        {"text, nested", xmlList(nested(4000, "<array>", "</array>")), "\u00e4"},
        {"text, too deep", xmlList(nested(80'000, "<dict>", "</dict>")), ""},
        {"text, too many entities", xmlList("<key>k</key><string>" + QByteArray("&lt;").repeated(5000) + "</string>"),
         ""},
        {"text, hidden depth", xmlList(nested(20'000, "<array><!--</array>-->", "</array>")), ""},
    };
    for (const auto &row : rows)
        EXPECT_EQ(textInPropertyList(row.bytes, "n"), row.text) << row.name;
}

TEST(PropertyList, NoByteLeadsOutOfTheList)
{
    const QByteArray good = binaryList({"\xd1\1\2", "Qn", "\x5f\x11" + bigEndian(20, 2) + std::string(20, 'x')});
    for (int at = 8; at < good.size(); ++at) {
        static_cast<void>(textInPropertyList(good.left(at), "n"));
        for (int value = 0; value < 256; ++value) {
            QByteArray bad = good;
            bad[at] = static_cast<char>(value);
            EXPECT_LE(textInPropertyList(bad, "n").size(), 100U) << at << ' ' << value;
        }
    }
}
