#include "paths/StringUtils.h"

#include <gtest/gtest.h>
#include <tuple>

TEST(StringUtils, SplitsAtWholeSeparators)
{
    const std::tuple<const char *, const char *, std::vector<std::string>> rows[] = {
        {"a,b,", ",", {"a", "b"}}, // none after the last one
        {",1,,3", ",", {"", "1", "", "3"}},
        {"a::b:c", "::", {"a", "b:c"}},
        {"", ".", {}},
    };
    std::vector<std::string> all, expected;
    for (const auto &[text, separator, fields] : rows) {
        StringSplit(text, all, separator);
        expected.insert(expected.end(), fields.begin(), fields.end());
        EXPECT_EQ(all, expected) << text;
    }
}

TEST(StringUtils, VersionsHaveExactlyThreePlainFields)
{
    std::vector<int> fields;
    for (const char *bad : {"1.2", "1.2.3.4", "1.2.3..", "...", "x.2.3", ".2.3"})
        EXPECT_FALSE(VersionToIntVec(bad, fields)) << bad;
    EXPECT_EQ(fields, std::vector<int>());
    EXPECT_TRUE(VersionToIntVec("10.0.1234.", fields));
    EXPECT_FALSE(VersionToIntVec("7.x.8", fields));
    EXPECT_EQ(fields, (std::vector<int>{10, 0, 1234, 7})) << "what came before the bad entry stays";
    for (const char *bad : {"1..3", "1.2.+3", "1.2. 3", "1.2.3x", "1.2.2147483648"})
        EXPECT_FALSE(VersionToIntVec(bad, fields)) << bad;
}
