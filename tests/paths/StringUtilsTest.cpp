#include "paths/StringUtils.h"

#include <gtest/gtest.h>

TEST(StringUtils, SplitsAtWholeSeparatorsAndAppends)
{
    std::vector<std::string> fields;
    for (const char *text : {"a,b,", ",1,,3", ""}) // none after the last one
        StringSplit(text, fields, ",");
    StringSplit("a::b:c", fields, "::");
    EXPECT_EQ(fields, (std::vector<std::string>{"a", "b", "", "1", "", "3", "a", "b:c"}));
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
