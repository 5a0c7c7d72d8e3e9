#include "paths/platform/generic/PropertyList_p.h"

#include <QDataStream>
#include <QIODevice>
#include <gtest/gtest.h>
#include <vector>

/// A binary list of these objects, whose references have a byte; the first is on top.
static QByteArray binaryList(const std::vector<std::string> &objects)
{
    QByteArray bytes = "bplist00", end;
    QDataStream numbers(&end, QIODevice::WriteOnly); // big-endian
    for (const std::string &object : objects) {
        numbers << static_cast<quint16>(bytes.size());
        bytes += QByteArray::fromStdString(object);
    }
    numbers << quint32{0} << quint16{0} << quint8{2} << quint8{1} << quint64{objects.size()} << quint64{0}
            << static_cast<quint64>(bytes.size());
    return bytes + end;
}

static QByteArray xmlList(const QByteArray &element, int count)
{
    const QByteArray nested = ('<' + element + '>').repeated(count) + ("</" + element + '>').repeated(count);
    return "<plist><dict><key>n</key><string>\u00e4</string><key>k</key>" + nested + "</dict></plist>";
}

TEST(PropertyList, TextsComeFromTheTopDictionaryAlone)
{
    const std::string key = "Qn", text = "Rhi", wide("\x61\0\xe4", 3);
    const std::tuple<const char *, QByteArray, std::string> rows[] = {
        {"second entry", binaryList({"\xd2\2\1\1\3", key, text, wide}), "\u00e4"},
        {"wide key", binaryList({"\xd1\1\2", std::string("\x61\0n", 3), text}), "hi"},
        {"long text", binaryList({"\xd1\1\2", key, "\x5f\x11\x1\x2c" + std::string(300, 'x')}), std::string(300, 'x')},
        {"first of two", binaryList({"\xd2\1\1\2\3", key, text, wide}), "hi"},
        {"array on top", binaryList({"\xa2\1\2", key, text}), ""},
        {"the dictionary as its own value", binaryList({std::string("\xd1\1\0", 3), key}), ""},
        {"more entries than bytes", binaryList({"\xdf\x13\x7f" + std::string(7, '\xff'), key, text}), ""},
        {"no such object", binaryList({"\xd1\1\x9", key, text}), ""},
        {"NUL", binaryList({"\xd1\1\2", key, std::string("\x52h\0", 3)}), ""},
        {"text", xmlList("true", 1), "\u00e4"},
        {"text, NUL", QByteArray("<plist><dict><key>n</key><string>h\0i</string></dict></plist>", 55), ""},
        {"text, nested", xmlList("array", 4000), "\u00e4"},
        {"text, too deep", xmlList("dict", 80'000), ""},
        {"text, too many entities", xmlList("string", 1).replace("\u00e4", QByteArray("&lt;").repeated(5000)), ""},
    };
    for (const auto &[name, bytes, expected] : rows)
        EXPECT_EQ(platform::generic::textInPropertyList(bytes, "n"), expected) << name;
}
