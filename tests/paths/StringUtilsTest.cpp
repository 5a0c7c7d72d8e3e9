#include "paths/StringUtils.h"

#include <gtest/gtest.h>
#include <tuple>

TEST(StringUtils, SplitsAtWholeSeparators)
{
    const std::tuple<const char *, const char *, const char *, std::vector<std::string>> rows[] = {
        {"trailing separator gives no field", "a,b,", ",", {"a", "b"}},
        {"leading or doubled separator gives an empty field", ",1,,3", ",", {"", "1", "", "3"}},
        {"long separator", "a::b:c", "::", {"a", "b:c"}},
        {"empty text", "", ".", {}},
    };
    std::vector<std::string> all, expected;
    for (const auto &[name, text, separator, fields] : rows) {
        StringSplit(text, all, separator);
        expected.insert(expected.end(), fields.begin(), fields.end());
        EXPECT_EQ(all, expected) << name;
    }
}

TEST(StringUtils, ConvertsDigitsOnly)
{
    std::vector<int> values;
    EXPECT_FALSE(ToIntVec({"7", "x", "8"}, values));
    EXPECT_EQ(values, std::vector<int>{7}) << "what came before the bad entry stays";
    EXPECT_FALSE(ToIntVec({""}, values));
    EXPECT_TRUE(IsAllDigits(""));
}

TEST(StringUtils, VersionsHaveExactlyThreePlainFields)
{
    std::vector<int> fields;
    for (const char *bad : {"1.2", "1.2.3.4", "1..3", "1.2.+3", "1.2. 3", "...", "1.2.3..", "1.2.2147483648"}) {
        EXPECT_FALSE(VersionToIntVec(bad, fields)) << bad;
        fields.clear();
    }
    EXPECT_TRUE(VersionToIntVec("10.0.1234.", fields));
    EXPECT_EQ(fields, (std::vector<int>{10, 0, 1234}));
    EXPECT_FALSE(VersionToIntVec("1.2", fields));
    EXPECT_EQ(fields.size(), 3U) << "a wrong number of fields leaves the output alone";
}
