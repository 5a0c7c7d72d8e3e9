#include "paths/StringUtils.h"

#include <gtest/gtest.h>

TEST(StringUtils, SplitsAtWholeSeparators)
{
    struct Row
    {
        const char *name;
        const char *text;
        const char *separator;
        std::vector<std::string> fields;
    };
    const Row rows[] = {
        {"plain", "1.2.3", ".", {"1", "2", "3"}},
        {"trailing separator gives no field", "a,b,", ",", {"a", "b"}},
        {"leading separator gives an empty field", ",a", ",", {"", "a"}},
        {"doubled separator gives an empty field", "1..3", ".", {"1", "", "3"}},
        {"only separators", "..", ".", {"", ""}},
        {"long separator", "a::b:c", "::", {"a", "b:c"}},
        {"no separator", "abc", ".", {"abc"}},
        {"empty text", "", ".", {}},
    };
    for (const Row &row : rows) {
        std::vector<std::string> fields = {"kept"};
        StringSplit(row.text, fields, row.separator);
        std::vector<std::string> expected = row.fields;
        expected.insert(expected.begin(), "kept");
        EXPECT_EQ(fields, expected) << row.name;
    }
}

TEST(StringUtils, ConvertsDigitsOnly)
{
    std::vector<int> values;
    EXPECT_FALSE(ToIntVec({"7", "x", "8"}, values));
    EXPECT_EQ(values, std::vector<int>{7}) << "what came before the bad entry stays";
    EXPECT_FALSE(ToIntVec({""}, values));
    EXPECT_TRUE(IsAllDigits(""));
    EXPECT_FALSE(IsAllDigits("\xD9\xA1")) << "an Arabic digit is no ASCII digit";
    EXPECT_TRUE(ToIntVec({}, values));
    EXPECT_EQ(values.size(), 1U);
}

TEST(StringUtils, VersionsHaveExactlyThreePlainFields)
{
    for (const char *bad :
         {"1.2", "1.2.3.4", "1..3", "1.2.x", "1.2.+3", "1.2. 3", "1.2.-3", "", "...", "1.2.3..", "1.2.2147483648"}) {
        std::vector<int> fields;
        EXPECT_FALSE(VersionToIntVec(bad, fields)) << bad;
    }
    std::vector<int> fields;
    EXPECT_TRUE(VersionToIntVec("10.0.1234.", fields));
    EXPECT_EQ(fields, (std::vector<int>{10, 0, 1234}));
    EXPECT_FALSE(VersionToIntVec("1.2", fields));
    EXPECT_EQ(fields.size(), 3U) << "a wrong number of fields leaves the output alone";
}
