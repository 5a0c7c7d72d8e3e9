#include "config/MacGlobalConfig.h"

#include "config/GlobalConfigFile.h"
#include "config/MacConfigPath.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

#include <identity.h>
#include <limits>
#include <sstream>
#include <sys/stat.h>

namespace fs = std::filesystem;

using test::FakeBundle;
using test::fakePlatform;

namespace {

const std::string kDefaultGroup = product::kDefaultGroupName.str();

} // namespace

TEST(MacGlobalConfig, OnlyOneIsOn)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=2\nenable_sbx=-1\napp_store=1\napp_international=0x1\n");
    EXPECT_FALSE(MacGlobalConfig::IsEnableFileLog());
    EXPECT_FALSE(MacGlobalConfig::IsEnableSandBox());
    EXPECT_TRUE(MacGlobalConfig::IsAppleStorePKG());
    EXPECT_TRUE(MacGlobalConfig::isInternationalApp());
}

TEST(MacGlobalConfig, SwitchesAreReadOnce)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=-1\napp_store=1\ngroup_name=first\n");
    EXPECT_FALSE(MacGlobalConfig::IsEnableFileLog());
    EXPECT_TRUE(MacGlobalConfig::IsAppleStorePKG());
    EXPECT_EQ(MacGlobalConfig::GetShareGroupName(), "first");
    bundle.writeGlobalFile("[common]\nenable_log=1\napp_store=0\ngroup_name=second\n");
    EXPECT_FALSE(MacGlobalConfig::IsEnableFileLog()) << "-1 counts as read";
    EXPECT_TRUE(MacGlobalConfig::IsAppleStorePKG());
    EXPECT_EQ(MacGlobalConfig::GetShareGroupName(), "first");
}

TEST(MacGlobalConfig, SandboxKeepsDataInTheGroupContainer)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_sbx=1\ngroup_name=group.x\n");
    fakePlatform().groupContainers["group.x"] = "/containers/group.x";
    EXPECT_EQ(MacConfigPath::GetInstance()->GetUserDataDir(), "/containers/group.x/");
}

TEST(MacGlobalConfig, DomesticEditionIgnoresTheNamesArgument)
{
    const FakeBundle bundle;
    EXPECT_EQ(MacGlobalConfig::GetReporterWhiteList().size(), 0U);
    bundle.writeGlobalFile("[common]\napp_international=1\n");
    EXPECT_FALSE(MacGlobalConfig::isInternationalApp()) << "the list asks for the edition, which is then settled";
    EXPECT_EQ(MacGlobalConfig::GetProductNameW(true), MacGlobalConfig::GetProductNameW(false));
    EXPECT_EQ(MacGlobalConfig::GetProductIdW(), L"44");
    EXPECT_EQ(MacGlobalConfig::GetAppAppSignKey(), product::kSignKeyDomestic.str());
}

TEST(MacGlobalConfig, InternationalEditionHasTwoNames)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\napp_international=1\n");
    EXPECT_EQ(MacGlobalConfig::GetProductName(true), product::kProductNameInternational.str());
    EXPECT_EQ(MacGlobalConfig::GetProductNameW(false), product::kProductNameInternationalForMac.wstr());
    EXPECT_EQ(MacGlobalConfig::GetSubAppIdentifier("x"), product::kIdentifierInternational.str() + ".x");
    EXPECT_EQ(MacGlobalConfig::GetProductId(), "502");
    EXPECT_EQ(MacGlobalConfig::GetAppAppSignKey(), product::kSignKeyInternational.str());
}

TEST(MacGlobalConfig, OutputsTheConfigurationInOrder)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=1\nenable_sbx=1\napp_international=0\ngroup_name=group.x\n");
    fakePlatform().groupContainers["group.x"] = bundle / "container";
    fs::create_directory(bundle / "container");
    MacGlobalConfig::OutputConfigLog();

    std::vector<std::string> names;
    std::istringstream lines(test::readFile(bundle / "container/foo.log"));
    for (std::string line; std::getline(lines, line);) {
        const std::string message = line.substr(line.find("]  ") + 3);
        const bool isHost = message.find("_host:") != std::string::npos;
        names.push_back(isHost ? message.substr(0, message.find(':')) : message);
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"sbx:1", "app_store:0", "group_name:group.x", "func_host", "vip_host",
                                        "intl_app:1", "sandbox:0"}));
}

TEST(GlobalConfigFile, BadFilesEndInTheDefaults)
{
    struct Row
    {
        const char *name;
        std::string content;
        long value; // of "number", asked with the default 7
        std::string text; // of "group_name", asked with the default "d"
    };
    const std::string good = "[common]\nnumber=1\ngroup_name=g\n";
    const Row rows[] = {
        {"good", good, 1, "g"},
        {"empty", "", 0, "d"},
        {"key missing", "[common]\nother=1\n", 0, "d"},
        {"other section", "number=1\n[other]\nnumber=1\n", 0, "d"},
        {"empty text", "[common]\ngroup_name=\n", 0, "d"},
        {"malformed line at the end", good + "garbage\n", 7, "d"},
        {"malformed section", "[common\nnumber=1\n", 7, "d"},
        {"byte-order mark", "\xEF\xBB\xBF" + good, 1, "g"},
        {"CRLF", "[common]\r\nnumber=1\r\ngroup_name=g\r\n", 1, "g"},
        {"10 MB line", "[common]\nnumber=" + std::string(10U << 20, '1') + "\n", 7, "d"},
        {"binary noise", "\xff\xfe\x01\x02[\x7f]", 7, "d"},
        {"past 64 bits", "[common]\nnumber=99999999999999999999999\n", std::numeric_limits<long>::max(), "d"},
        {"twice", "[common]\nnumber=1\nnumber=2\ngroup_name=a\ngroup_name=b\n", 1, "a\nb"},
        {"too large", good + std::string(1U << 20, '\n'), 7, "d"},
        {"no number", "[common]\nnumber=yes\n", 0, "d"},
    };
    const FakeBundle bundle;
    for (const Row &row : rows) {
        bundle.writeGlobalFile(row.content);
        EXPECT_EQ(GetIntValueFromMKDat("common", "number", 7), row.value) << row.name;
        EXPECT_EQ(GetStrValueFromMKDat("common", "group_name", "d"), row.text) << row.name;
    }
}

TEST(GlobalConfigFile, WhatIsNoRegularFileIsNotOpened)
{
    const FakeBundle bundle;
    const std::string path = bundle / "Foo.app/Contents/Resources/mk.dat";
    EXPECT_EQ(GetIntValueFromMKDat("common", "number", 7), 7) << "missing";
    fs::create_directories(path);
    EXPECT_EQ(GetIntValueFromMKDat("common", "number", 7), 7) << "folder";
    fs::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(GetStrValueFromMKDat("common", "group_name", "d"), "d") << "FIFO without a writer";
    EXPECT_FALSE(MacGlobalConfig::IsEnableFileLog());
    EXPECT_EQ(MacGlobalConfig::GetShareGroupName(), kDefaultGroup);
}

TEST(GlobalConfigFile, AnythingThatExistsExists)
{
    const FakeBundle bundle;
    EXPECT_TRUE(isPathExist(bundle.dir().path().string()));
    EXPECT_TRUE(isPathExist("/dev/null"));
    EXPECT_FALSE(isPathExist(""));
    EXPECT_FALSE(isPathExist(bundle / "nothing"));
    fs::create_symlink(bundle / "nothing", bundle / "dangling");
    EXPECT_FALSE(isPathExist(bundle / "dangling"));
    EXPECT_FALSE(isPathExist(bundle / std::string(5000, 'x'))) << "the file system does not tell";
}
