#include "config/ConfigFileUtil.h"

#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

using U = ConfigFileUtil;

namespace {

struct ConfigFiles : testing::Test
{
    const test::FakeBundle m_bundle;
    const std::string m_local = m_bundle / "support/Foo/config.ini";
    const std::string m_counters = m_bundle / "support/Foo/config_count.ini";
    const std::string m_bundled = m_bundle / "Foo.app/Contents/Resources/cfgdata/cfgdata.ini";
    const std::string m_version = m_bundle / "Foo.app/Contents/Resources/data/mainversion.ini";
};

} // namespace

TEST_F(ConfigFiles, BadFilesEndInTheDefault)
{
    const std::tuple<const char *, std::string, int> rows[] = {
        // content, "s/k" asked with the default 7
        {"key without section", "k=1\n", 7},
        {"no number", "[s]\nk=\xE4\n", 0},
        {"past 32 bits, cut as QVariant does", "[s]\nk=4294967297\n", 1},
        {"of another kind", "[s]\nk=@Size(1 2)\n", 0},
    };
    for (const auto &[name, content, value] : rows) {
        test::writeFile(m_local, content);
        EXPECT_EQ(U::GetLocalAppCfgValueInt("s/k", 7), value) << name;
        U::SetLocalAppCfgValueInt("s/k", 99);
        EXPECT_EQ(U::GetLocalAppCfgValueInt("s/k", 7), 99) << name;
    }
}

TEST_F(ConfigFiles, KeysStayInTheirFile)
{
    const std::string bundled = "[General]\nk=5\n\n[account]\naccount=103\n";
    test::writeFile(m_bundled, bundled);
    EXPECT_EQ(U::GetCfgdataFileValueInt("account/account", 1), 103);
    EXPECT_EQ(U::GetCfgdataFileValueInt("k", 1), 5);
    EXPECT_EQ(U::GetCfgdataFileValueInt("", 1), 1) << "empty keys are refused";
    EXPECT_EQ(U::GetCfgdataFileValueIntUser("account/account", 1), 1);
    EXPECT_EQ(U::GetLocalAppCfgValueInt("account/account", 1), 1);
    U::SetCfgdataFileValueIntUser("", 5);
    EXPECT_FALSE(fs::exists(m_bundle / "support") || fs::exists(m_bundled + ".user")) << "nothing to create";
    U::SetCfgdataFileValueIntUser("account/account", 13);
    EXPECT_EQ(fs::status(m_bundled + ".user").permissions(), fs::perms(0644)) << "for all users of the application";
    EXPECT_EQ(U::GetCfgdataFileValueIntUser("account/account", 1), 13);
    EXPECT_EQ(test::readFile(m_bundled), bundled);

    EXPECT_EQ(U::GetProductVersion(), "");
    test::writeFile(m_version, "date=1\n[version]\r\ndate= 21. Nov. 2026, 10:00; ü \r\n[other]\ndate=2\n");
    EXPECT_EQ(U::GetProductVersion(), "21. Nov. 2026, 10:00; ü") << "as it stands";
}

TEST_F(ConfigFiles, BatchIsWholeOrNothing)
{
    std::vector<QString> keys = {"a/x", "y", ""};
    std::vector<int> values = {1, 2, 3};
    U::SetLocalAppCfgForCountValueInt(keys, values, 2);
    U::SetLocalAppCfgForCountValueInt(keys, {1, 2}, 3);
    EXPECT_FALSE(fs::exists(m_counters));
    U::SetLocalAppCfgForCountValueInt(keys, values, 3);
    EXPECT_EQ(test::readFile(m_counters), "[General]\ny=2\n\n[a]\nx=1\n");

    values = {0, 0, 0};
    U::GetLocalAppCfgForCountValueInt(keys, values, 2, 7);
    EXPECT_EQ(values, (std::vector<int>{0, 0, 0}));
    U::GetLocalAppCfgForCountValueInt(keys, values, 3, 7);
    EXPECT_EQ(values, (std::vector<int>{1, 2, 7}));
}

TEST_F(ConfigFiles, CounterStoreIsCleared)
{
    U::ClearLocalAppCfgForCount();
    test::writeFile(m_counters, "y=2\n");
    U::ClearLocalAppCfgForCount();
    EXPECT_TRUE(fs::is_empty(m_bundle / "support/Foo"));

    const std::string target = m_bundle / "target";
    test::writeFile(target, "y=2\n");
    fs::permissions(target, fs::perms::owner_read);
    fs::create_symlink(target, m_counters);
    U::ClearLocalAppCfgForCount();
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read) << "what a link leads to is not ours";

    test::writeFile(m_counters + "/a folder cannot be removed as a file", "");
    fs::create_directory(m_counters + ".tmp");
    U::ClearLocalAppCfgForCount();
    EXPECT_FALSE(fs::exists(m_counters));
    EXPECT_FALSE(fs::is_empty(m_counters + ".tmp")) << "put in the place of an older one";
}
