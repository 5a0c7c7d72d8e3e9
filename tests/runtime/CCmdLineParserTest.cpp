#include "runtime/CCmdLineParser.h"

#include <gtest/gtest.h>
#include <random>

namespace {

constexpr wchar_t kInvalid = 0x00A1B400; // its upper half would be a "-" if it were taken for a surrogate

/// Every switch as [name=value], in order.
std::string switchesOf(const CCmdLineParser &parser)
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

} // namespace

TEST(CCmdLineParser, Grammar)
{
    struct Row
    {
        const char *name;
        std::wstring line;
        const char *switches;
    };
    const Row rows[] = {
        {"switches without values", L"-a -b", "[a=][b=]"},
        {"sorted by code unit, not by position", L"-b /Z -a -\u00e9 -aa", "[a=][aa=][b=][z=][é=]"},
        {"solidus and colon", L"/Path:Value", "[path=Value]"},
        {"hyphen and equals sign", L"-path=Value", "[path=Value]"},
        {"quoted value", L"-file:\"a b -c.pdf\" -x", "[file=a b -c.pdf][x=]"},
        {"no closing quotation mark", L"-file:\"unterminated -text", "[file=unterminated -text]"},
        {"quotation mark inside a value", L"-a=b\"c d\" -e", "[a=b\"c][e=]"},
        {"value to the end", L"-a=b:c=d", "[a=b:c=d]"},
        {"delimiters inside a value", L"-a=/x-y -b", "[a=/x-y][b=]"},
        {"one delimiter taken off", L"--name=v", "[-name=v]"},
        {"separator at the very end", L"-a:", "[a=]"},
        {"separator before a space", L"-a= -b", "[a=][b=]"},
        {"first one counts", L"-a=1 -A=2 -a", "[a=1]"},
        {"no name, value skipped", L"-=\"x -y\" -b", "[b=]"},
        {"delimiter and space", L"- a", ""},
        {"path", L"/tmp/x y", "[tmp/x=]"},
        {"no delimiter", L"report.pdf", ""},
        {"delimiter at the end", L"x -", ""},
        {"tab is no separator", L"-a\t-b", "[a\t-b=]"},
        {"beyond the first plane", L"-\U0001F600=\U0001F601", "[\U0001F600=\U0001F601]"},
        {"no code point", L"a" + std::wstring(1, kInvalid) + L"b -x=" + kInvalid, "[x=\uFFFD]"},
    };
    for (const Row &row : rows) {
        CCmdLineParser parser(L"-old");
        EXPECT_EQ(parser.Parse(row.line.c_str()), *row.switches != '\0') << row.name;
        EXPECT_EQ(switchesOf(parser), row.switches) << row.name;
    }
}

TEST(CCmdLineParser, CaseOfNames)
{
    const CCmdLineParser folding(L"/PATH:A -\u00c9");
    EXPECT_EQ(folding.GetVal(L"paTH"), "A");
    EXPECT_TRUE(folding.HasKey(L"\u00e9") && folding.HasKey(L"\u00c9"));

    const CCmdLineParser matching(L"/Path:1 /path:2", true);
    EXPECT_EQ(switchesOf(matching), "[Path=1][path=2]");
    EXPECT_FALSE(matching.HasKey(L"PATH"));
}

TEST(CCmdLineParser, Lookups)
{
    const CCmdLineParser parser(L"-n=12 -t=abc -e -m=-7 -b=99999999999");
    EXPECT_EQ(parser.GetIntVal(L"n", 5), 12);
    EXPECT_EQ(parser.GetIntVal(L"m", 5), -7);
    EXPECT_EQ(parser.GetIntVal(L"t", 5), 0) << "no number";
    EXPECT_EQ(parser.GetIntVal(L"b", 5), 0) << "past the range";
    EXPECT_EQ(parser.GetIntVal(L"e", 5), 5) << "no value";
    EXPECT_EQ(parser.GetIntVal(L"x", 5), 5) << "not given";
    EXPECT_TRUE(parser.HasKey(L"e") && !parser.HasVal(L"e") && parser.HasVal(L"t"));

    QString value = "kept";
    EXPECT_FALSE(parser.GetVal(L"x", value));
    EXPECT_EQ(value, "kept");
    EXPECT_TRUE(parser.GetVal(L"e", value));
    EXPECT_EQ(value, "");

    QString key = "emptied";
    value = "kept";
    auto end = std::next(parser.getFirst(), 5);
    EXPECT_TRUE(parser.isLast(parser.getNext(end, key, value)));
    EXPECT_EQ(key + value, "kept");
}

TEST(CCmdLineParser, NullChangesNothing)
{
    CCmdLineParser parser(nullptr);
    parser.Parse(L"-a=1");
    EXPECT_FALSE(parser.Parse(nullptr));
    EXPECT_EQ(switchesOf(parser), "[a=1]");
    EXPECT_FALSE(parser.HasKey(nullptr) || parser.HasVal(nullptr));
    EXPECT_EQ(parser.GetVal(nullptr), "");
    EXPECT_EQ(parser.GetIntVal(nullptr, 5), 5);
}

TEST(CCmdLineParser, HugeAndRandomLinesEnd)
{
    for (const wchar_t *pattern : {L"-", L"/ ", L"-:", L"-a=\"", L"\"", L"-\U0010FFFF=", L"x"}) {
        std::wstring line;
        while (line.size() < 10'000'000)
            line += pattern;
        CCmdLineParser(line.c_str());
    }

    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same text every time
    const std::wstring alphabet = L"-/ :=\"aA\u0130\u00e9\U0001F600\xD800\xDFFF" + std::wstring{kInvalid, wchar_t(-1)};
    std::wstring line;
    while (line.size() < 1'000'000)
        line += alphabet[random() % alphabet.size()];
    for (const bool matchCase : {false, true}) {
        const CCmdLineParser parser(line.c_str(), matchCase);
        EXPECT_FALSE(parser.isLast(parser.getFirst()));
    }
}
