#include "config/MacGlobalConfig.h"

#include "config/GlobalConfigFile.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>
#include <identity.h>
#include <limits>

namespace fs = std::filesystem;

using test::FakeBundle;
using test::fakePlatform;

TEST(MacGlobalConfig, OnlyOneIsOnAndIsReadOnce)
{
    const FakeBundle bundle;
    for (const char *settings : {"enable_log=-1\nenable_sbx=2\napp_store=1\napp_international=0x1\ngroup_name=first",
                                 "enable_log=1\nenable_sbx=1\napp_store=0\napp_international=0\ngroup_name=second"}) {
        bundle.writeGlobalFile(std::string("[common]\n") + settings);
        EXPECT_FALSE(MacGlobalConfig::IsEnableFileLog()) << "-1 counts as read";
        EXPECT_FALSE(MacGlobalConfig::IsEnableSandBox());
        EXPECT_TRUE(MacGlobalConfig::IsAppleStorePKG());
        EXPECT_TRUE(MacGlobalConfig::isInternationalApp());
        EXPECT_EQ(MacGlobalConfig::GetShareGroupName(), "first");
    }
}

TEST(MacGlobalConfig, ConfigurationGoesToTheLogInTheGroupContainer)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=1\nenable_sbx=1\napp_international=0\ngroup_name=group.x\n");
    fakePlatform().groupContainers["group.x"] = bundle / "container";
    fs::create_directory(bundle / "container");
    MacGlobalConfig::OutputConfigLog();

    EXPECT_EQ(test::logMessages(bundle / "container/foo.log"),
              "sbx:1\napp_store:0\ngroup_name:group.x\nfunc_host:" + MacGlobalUrl::GetDefSvrHost(nullptr)
                  + "\nvip_host:" + MacGlobalUrl::GetVipSvrHost() + "\nintl_app:1\nsandbox:0\n");
}

TEST(GlobalConfigFile, BadFilesEndInTheDefaults)
{
    const std::string good = "[common]\nnumber=1\ngroup_name=g\n";
    const std::tuple<const char *, std::string, long, std::string> rows[] = {
        // content, "number" asked with the default 7, "group_name" asked with the default "d"
        {"no number, empty text", "[common]\nnumber=yes\ngroup_name=\n", 0, "d"},
        {"malformed line at the end", good + "garbage\n", 7, "d"},
        {"byte-order mark", "\xEF\xBB\xBF" + good, 1, "g"},
        {"CRLF", "[common]\r\nnumber=1\r\ngroup_name=g\r\n", 1, "g"},
        {"10 MB line", "[common]\nnumber=" + std::string(10U << 20, '1') + "\n", 7, "d"},
        {"binary noise", "\xff\xfe\x01\x02[\x7f]", 7, "d"},
        {"past 64 bits", "[common]\nnumber=99999999999999999999999\n", std::numeric_limits<long>::max(), "d"},
        {"twice", "[common]\nnumber=1\nnumber=2\ngroup_name=a\ngroup_name=b\n", 1, "a\nb"},
        {"too large", good + std::string(1U << 20, '\n'), 7, "d"},
    };
    const FakeBundle bundle;
    for (const auto &[name, content, number, text] : rows) {
        bundle.writeGlobalFile(content);
        EXPECT_EQ(GetIntValueFromMKDat("common", "number", 7), number) << name;
        EXPECT_EQ(GetStrValueFromMKDat("common", "group_name", "d"), text) << name;
    }
}

TEST(GlobalConfigFile, WhatIsNoRegularFileIsNotOpened)
{
    const FakeBundle bundle;
    const std::string path = bundle / "Foo.app/Contents/Resources/mk.dat";
    EXPECT_EQ(GetIntValueFromMKDat("common", "number", 7), 7) << "missing";
    fs::create_directories(path);
    EXPECT_TRUE(isPathExist(path)) << "anything that exists";
    EXPECT_EQ(MacGlobalConfig::GetShareGroupName(), product::kDefaultGroupName.str());
    fs::remove(path);
    fs::create_symlink(bundle / "nothing", path);
    for (const std::string &none : {path, std::string(), bundle / std::string(5000, 'x')})
        EXPECT_FALSE(isPathExist(none)) << none;
}
