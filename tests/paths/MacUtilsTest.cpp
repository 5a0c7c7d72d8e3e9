#include "paths/MacUtils.h"

#include "paths/MacPath.h"
#include "tests/support/FakePlatform.h"

#include <array>
#include <gtest/gtest.h>

using test::fakePlatform;

static void setVersion(const std::string &version)
{
    fakePlatform().info[""]["CFBundleShortVersionString"] = version;
}

TEST(MacPath, CutsFoldersFromTheExecutablesPath)
{
    const std::array<const char *, 4> rows[] = {
        // executable, its folder, the folder above, a resource
        {"/A.app/Contents/MacOS/x", "/A.app/Contents/MacOS/", "/A.app/Contents/", "/A.app/Contents/MacOS/x.png"},
        {"/x", "/", "", "/x.png"},
        {"", "", "", "/x.png"},
    };
    for (const auto &[executable, folder, above, resource] : rows) {
        fakePlatform().bundleExecutablePath = executable;
        EXPECT_EQ(MacPath::getAppDirPath(), folder);
        EXPECT_EQ(MacPath::getAppContentsDirPath(), above);
        EXPECT_EQ(MacUtils::getResourcePath("x.png"), resource);
    }
}

TEST(MacUtils, MainApplicationIsTheOutermostBundle)
{
    fakePlatform().bundleExecutablePath = "/Applications/A.app/Contents/Helpers/B.app/Contents/MacOS/b";
    EXPECT_EQ(MacUtils::GetMainAppPListFullPath(), "/Applications/A.app/Contents/Info.plist");

    setVersion("1.1.1");
    fakePlatform().info["/Applications/A.app/Contents/Info.plist"]["CFBundleShortVersionString"] = "2.5.31";
    EXPECT_EQ(MacUtils::GetBundleVersionInt(true), 2050031);
    EXPECT_EQ(MacUtils::GetBundleVersionTail(true), 31);
    EXPECT_EQ(MacUtils::GetBundleVersionInt(false), 1010001);

    fakePlatform().bundleExecutablePath = "/usr/bin/b";
    EXPECT_EQ(MacUtils::GetMainAppPListFullPath(), "");
}

TEST(MacUtils, HelpersInTheSymLinkFolderAskTheirOwner)
{
    auto &platform = fakePlatform();
    platform.info["/A.app"] = {{"CFBundleName", "Owner"}, {"CFBundleShortVersionString", "3.1.9"}};
    platform.bundlePath = "/A.app/Contents/MacOS_SymLink";
    EXPECT_EQ(MacUtils::GetAppName(), "Owner");
    EXPECT_EQ(MacUtils::GetBundleVersionString(), "3.1.9");
    platform.info[""]["CFBundleName"] = "Own";
    EXPECT_EQ(MacUtils::GetAppName(), "Own") << "the running bundle's own value comes first";

    platform.bundlePath = "/A.app/Contents/MacOS";
    EXPECT_EQ(MacUtils::GetBundleVersionString(), "");
}

TEST(MacUtils, VersionNumbersFillFourSlots)
{
    unsigned short a = 9, b = 9, c = 9, d = 9;
    for (const char *bad : {"65536.1.2", "1.65536.2", "1.2.65536", "none"}) {
        setVersion(bad);
        EXPECT_FALSE(MacUtils::GetBundleVersionNumbers(&a, &b, &c, &d, false)) << bad;
    }
    EXPECT_EQ(a, 9) << "nothing is written on failure";

    setVersion("3.1.65535");
    EXPECT_TRUE(MacUtils::GetBundleVersionNumbers(&a, &b, &c, &d, false));
    EXPECT_EQ((std::vector<int>{a, b, c, d}), (std::vector<int>{3, 1, 0, 65535}));
    EXPECT_TRUE(MacUtils::GetBundleVersionNumbers(nullptr, nullptr, nullptr, nullptr, false));

    setVersion("1.70000.2");
    EXPECT_EQ(MacUtils::GetBundleVersionInt(false), 701000002) << "no range check here";
}

TEST(MacUtils, AsksThePlatformAboutTheSystem)
{
    auto &platform = fakePlatform();
    platform.nanoseconds = 2'000'999'999;
    EXPECT_EQ(MacUtils::GetTickCount(), 2000U);

    platform.submenuItems = {"Open", "Close", "Gone"};
    updateMacOSMenuTitles({{"Open", "Öffnen"}, {"Gone", ""}});
    EXPECT_EQ(platform.submenuItems, (std::vector<QString>{"Öffnen", "Close", ""}));

    platform.secondsSinceLastInput = 1.0;
    EXPECT_FALSE(isMainThreadIdle()) << "only after more than a second";
    EXPECT_FALSE(MacUtils::checkNetworkAvailable()) << "not known";
    for (const bool connectionRequired : {false, true}) {
        platform.reachability = platform::ReachabilityFlags{true, connectionRequired};
        EXPECT_EQ(MacUtils::checkNetworkAvailable(), !connectionRequired);
    }
}
