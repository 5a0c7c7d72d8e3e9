#include "vipsdk/include/OndIniWrapper.h"

#include "tests/support/TestFiles.h"

#include <QString>
#include <gtest/gtest.h>

using cf_ini::OndIniWrapper;

static int load(OndIniWrapper &ini, const std::string &path)
{
    return ini.LoadFile(QString::fromStdString(path).toStdWString().c_str(), 2, 0);
}

TEST(OndIniWrapper, TextsComeBackAsTheyStandAndNothingElse)
{
    const std::string head = "[section]\n";
    std::string many = '[' + std::string(4'000'000, 's') + "]\n"; // hours, if each line had the name once more
    for (int i = 0; i < 200'000; ++i)
        many += "=\n";
    const std::tuple<const char *, std::string, std::wstring, int> rows[] = {
        // content, "key" of "section" as a text (default "d") and as a number (default 7)
        {"number", head + " key = -12 \n", L"-12", -12},
        {"every special character", head + R"(key=a\{b}, "c"; %20 @d #e = \)", LR"(a\{b}, "c"; %20 @d #e = \)", 0},
        {"CRLF", "[section]\r\n\r\nkey=text\r\n", L"text", 0},
        {"byte-order mark", "\xEF\xBB\xBF[section]\nkey=ü😀", L"ü😀", 0},
        {"Latin-1", head + "key=\xFC", L"ü", 0},
        {"comments", "; [other]\n[section] ; twice\n#key=1\nkey=text\n;key=2", L"text", 0},
        {"section twice", "[section]\nkey=1\n[other]\nkey=2\n[section]\nkey=3", L"3", 3},
        {"other section", "key=1\n[Section]\nkey=2\n[section\nkey=3", L"d", 7},
        {"long section", many + head + "key=1", L"1", 1},
        {"other key", head + "Key=1\nkeys=2\nkey\n=3", L"d", 7},
    };
    const test::TempDir dir;
    const std::string path = dir / "ü.ini";
    for (const auto &[name, content, text, number] : rows) {
        test::writeFile(path, content);
        OndIniWrapper ini;
        EXPECT_NE(load(ini, path), 0) << name;
        EXPECT_EQ(ini.Read(L"section", L"key", L"d"), text) << name;
        EXPECT_EQ(ini.ReadInt(L"section", L"key", 7), number) << name;
    }
    OndIniWrapper ini;
    EXPECT_NE(load(ini, path), 0);
    EXPECT_EQ(load(ini, dir / "missing"), 0);
    EXPECT_EQ(ini.ReadInt(L"section", L"Key", 7), 7) << "nothing is left of what was loaded before";
    EXPECT_EQ(ini.LoadFile(nullptr, 2, 0), 0);
    std::filesystem::resize_file(path, (16U << 20) + 1);
    EXPECT_EQ(load(ini, path), 0) << "too large";
}
