#include "runtime/CCmdLineParser.h"

#include <gtest/gtest.h>
#include <tuple>

constexpr wchar_t kInvalid = 0x00A1B400; // its upper half would be a "-" if it were taken for a surrogate

/// Every switch as [name=value], in order.
static std::string switchesOf(const CCmdLineParser &parser)
{
    QString all;
    QString key;
    QString value;
    for (auto it = parser.getFirst(); !parser.isLast(it);) {
        parser.getNext(it, key, value);
        all += '[' + key + '=' + value + ']';
    }
    return all.toStdString();
}

TEST(CCmdLineParser, Grammar)
{
    const std::tuple<const char *, std::wstring, const char *> rows[] = {
        {"sorted by code unit, not by position", L"-b /Z -a -\u00e9 -aa", "[a=][aa=][b=][z=][é=]"},
        {"quoted value", L"-file:\"a b -c.pdf\" -x", "[file=a b -c.pdf][x=]"},
        {"no closing quotation mark", L"-file:\"unterminated -text", "[file=unterminated -text]"},
        {"quotation mark inside a value", L"-a=b\"c d\" -e", "[a=b\"c][e=]"},
        {"delimiters inside a value", L"-a=/x-y -b", "[a=/x-y][b=]"},
        {"one delimiter taken off", L"--name=v", "[-name=v]"},
        {"separator at the very end", L"-a:", "[a=]"},
        {"separator before a space", L"-a= -b", "[a=][b=]"},
        {"first one counts", L"/a:1 -A=2:=3 -a", "[a=1]"},
        {"no name, value skipped", L"-=\"x -y\" -b", "[b=]"},
        {"no delimiter", L"report.pdf", ""},
        {"delimiter at the end", L"x -", ""},
        {"tab is no separator", L"-a\t-b", "[a\t-b=]"},
        {"beyond the first plane", L"-\U0001F600=\U0001F601", "[\U0001F600=\U0001F601]"},
        {"no code point", L"a" + std::wstring(1, kInvalid) + L"b -x=" + kInvalid, "[x=\uFFFD]"},
    };
    for (const auto &[name, line, switches] : rows) {
        CCmdLineParser parser(L"-old");
        EXPECT_EQ(parser.Parse(line.c_str()), *switches != '\0') << name;
        EXPECT_EQ(switchesOf(parser), switches) << name;
    }
}

TEST(CCmdLineParser, Lookups)
{
    CCmdLineParser parser(nullptr);
    EXPECT_TRUE(parser.Parse(L"-N=-12 -t=abc -\u00c9 -b=99999999999"));
    EXPECT_FALSE(parser.Parse(nullptr)) << "and changes nothing";
    const std::tuple<const wchar_t *, int, const char *> rows[] = {
        // asked with the default 5, "kept"
        {L"n", -12, "-12"}, {L"T", 0, "abc"},  {L"b", 0, "99999999999"},
        {L"\u00e9", 5, ""}, {L"x", 5, "kept"}, {nullptr, 5, "kept"},
    };
    for (const auto &[name, number, text] : rows) {
        QString value = "kept";
        const bool isThere = parser.GetVal(name, value);
        EXPECT_EQ(value, text) << name;
        EXPECT_EQ(isThere, value != "kept") << name;
        EXPECT_EQ(parser.GetIntVal(name, 5), number) << name;
        EXPECT_EQ(parser.HasKey(name), isThere) << name;
        EXPECT_EQ(parser.HasVal(name), number != 5) << name;
    }
    QString key = "emptied", value = "kept";
    auto end = std::next(parser.getFirst(), 4);
    EXPECT_TRUE(parser.isLast(parser.getNext(end, key, value)));
    EXPECT_EQ(key + value, "kept");

    const CCmdLineParser matching(L"/Path:1 /path:2", true);
    EXPECT_EQ(switchesOf(matching), "[Path=1][path=2]");
    EXPECT_FALSE(matching.HasKey(L"PATH"));
}
