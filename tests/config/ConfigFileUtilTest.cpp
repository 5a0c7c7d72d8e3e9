#include "config/ConfigFileUtil.h"

#include "tests/support/FakePlatform.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

class ConfigFiles : public testing::Test
{
protected:
    [[nodiscard]] std::string resource(const std::string &name) const
    {
        return m_bundle / ("Foo.app/Contents/Resources/" + name);
    }

    const test::FakeBundle m_bundle;
    const std::string m_local = m_bundle / "support/Foo/config.ini";
    const std::string m_counters = m_bundle / "support/Foo/config_count.ini";
};

} // namespace

TEST_F(ConfigFiles, BadFilesEndInTheDefault)
{
    struct Row
    {
        const char *name;
        std::string content;
        int value; // of "s/k", asked with the default 7
    };
    const Row rows[] = {
        {"good", "[s]\nk=12\n", 12},
        {"empty", "", 7},
        {"key without section", "k=1\n", 7},
        {"section twice", "[s]\nk=1\n[t]\nk=2\n[s]\nk=3\n", 3},
        {"CRLF", "[s]\r\nk=12\r\n", 12},
        {"byte-order mark", "\xEF\xBB\xBF[s]\nk=12\n", 12},
        {"quoted", "[s]\nk=\"12\"\n", 12},
        {"empty value", "[s]\nk=\n", 0},
        {"list", "[s]\nk=1,2\n", 0},
        {"no number", "[s]\nk=\xE4\n", 0},
        {"past 32 bits, cut as QVariant does", "[s]\nk=4294967297\n", 1},
        {"type tag of another kind", "[s]\nk=@Variant(\\0\\0\\0\\t\\xff\\xff\\xff\\xfe)\n", 0},
        {"malformed lines", "[s\n]\n=\nk\n[s]\nk=12", 12},
        {"binary", std::string("\0\x01\xff[s]\0=\n", 9), 7},
        {"5 MB", "[t]\n" + std::string(5U << 20, 'x') + "\n[s]\nk=12\n", 12},
    };
    auto time = fs::file_time_type::clock::now();
    for (const Row &row : rows) {
        test::writeFile(m_local, row.content);
        // A change is noticed by size and time, to the millisecond; the rows follow faster than that.
        fs::last_write_time(m_local, time += std::chrono::seconds(1));
        EXPECT_EQ(ConfigFileUtil::GetLocalAppCfgValueInt("s/k", 7), row.value) << row.name;
        ConfigFileUtil::SetLocalAppCfgValueInt("s/k", 99);
        EXPECT_EQ(ConfigFileUtil::GetLocalAppCfgValueInt("s/k", 7), 99) << row.name;
    }
}

TEST_F(ConfigFiles, WhatIsNoFileIsLeftAlone)
{
    fs::create_directories(m_local);
    test::writeFile(resource("cfgdata/x"), "");
    ASSERT_EQ(::mkfifo(resource("cfgdata/cfgdata.ini.user").c_str(), 0600), 0);
    ConfigFileUtil::SetLocalAppCfgValueInt("k", 1);
    ConfigFileUtil::SetCfgdataFileValueIntUser("k", 1);
    EXPECT_EQ(ConfigFileUtil::GetLocalAppCfgValueInt("k", 7), 7);
    EXPECT_EQ(ConfigFileUtil::GetCfgdataFileValueIntUser("k", 7), 7);
    EXPECT_TRUE(fs::is_fifo(resource("cfgdata/cfgdata.ini.user")));
}

TEST_F(ConfigFiles, EmptyKeysAreRefused)
{
    test::writeFile(m_local, "[General]\nk=1\n");
    EXPECT_EQ(ConfigFileUtil::GetLocalAppCfgValueInt("k", 7), 1);
    EXPECT_EQ(ConfigFileUtil::GetLocalAppCfgValueInt("", 7), 7);
    ConfigFileUtil::SetLocalAppCfgValueInt("", 5);
    ConfigFileUtil::SetCfgdataFileValueIntUser("", 5);
    EXPECT_EQ(test::readFile(m_local), "[General]\nk=1\n");
    EXPECT_FALSE(fs::exists(resource("cfgdata/cfgdata.ini.user")));
}

TEST_F(ConfigFiles, OverlayAndBundleAreApart)
{
    test::writeFile(resource("cfgdata/cfgdata.ini"), "[account]\naccount=103\n");
    EXPECT_EQ(ConfigFileUtil::GetCfgdataFileValueInt("account/account", 1), 103);
    EXPECT_EQ(ConfigFileUtil::GetCfgdataFileValueIntUser("account/account", 1), 1);
    EXPECT_EQ(ConfigFileUtil::GetLocalAppCfgValueInt("account/account", 1), 1);
    EXPECT_FALSE(fs::exists(m_bundle / "support")) << "reading creates nothing";
    ConfigFileUtil::SetCfgdataFileValueIntUser("account/account", 13);
    EXPECT_EQ(ConfigFileUtil::GetCfgdataFileValueIntUser("account/account", 1), 13);
    EXPECT_EQ(ConfigFileUtil::GetCfgdataFileValueInt("account/account", 1), 103);
}

TEST_F(ConfigFiles, BatchIsWholeOrNothing)
{
    std::vector<QString> keys = {"a/x", "y", ""};
    std::vector<int> values = {1, 2, 3};
    ConfigFileUtil::SetLocalAppCfgForCountValueInt(keys, values, 2);
    ConfigFileUtil::SetLocalAppCfgForCountValueInt(keys, {1, 2}, 3);
    ConfigFileUtil::SetLocalAppCfgForCountValueInt({}, {}, 0);
    EXPECT_FALSE(fs::exists(m_counters));
    ConfigFileUtil::SetLocalAppCfgForCountValueInt(keys, values, 3);
    EXPECT_EQ(test::readFile(m_counters), "[General]\ny=2\n\n[a]\nx=1\n");

    values = {0, 0, 0};
    ConfigFileUtil::GetLocalAppCfgForCountValueInt(keys, values, 2, 7);
    EXPECT_EQ(values, (std::vector<int>{0, 0, 0}));
    keys.back() = "z";
    ConfigFileUtil::GetLocalAppCfgForCountValueInt(keys, values, 3, 7);
    EXPECT_EQ(values, (std::vector<int>{1, 2, 7}));
}

TEST_F(ConfigFiles, CounterStoreIsCleared)
{
    ConfigFileUtil::ClearLocalAppCfgForCount();
    test::writeFile(m_counters, "y=2\n");
    fs::permissions(m_counters, fs::perms::owner_read);
    ConfigFileUtil::ClearLocalAppCfgForCount();
    EXPECT_FALSE(fs::exists(m_counters));
    EXPECT_FALSE(fs::exists(m_counters + ".tmp"));

    test::writeFile(m_counters + "/a folder cannot be removed as a file", "");
    ConfigFileUtil::ClearLocalAppCfgForCount();
    EXPECT_FALSE(fs::exists(m_counters));
    EXPECT_TRUE(fs::exists(m_counters + ".tmp"));
}

TEST_F(ConfigFiles, VersionDateIsTakenAsItStands)
{
    EXPECT_EQ(ConfigFileUtil::GetProductVersion(), "");
    test::writeFile(resource("data/mainversion.ini"), "date=1\n[other]\ndate=2\n");
    EXPECT_EQ(ConfigFileUtil::GetProductVersion(), "");
    test::writeFile(resource("data/mainversion.ini"), "[version]\r\ndate= 21. Nov. 2026, 10:00; ü \r\n");
    EXPECT_EQ(ConfigFileUtil::GetProductVersion(), "21. Nov. 2026, 10:00; ü");
}
