#include "paths/MacUtils.h"

#include "paths/MacPath.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

using test::fakePlatform;

namespace {

void setVersion(const std::string &version)
{
    fakePlatform().info[""]["CFBundleShortVersionString"] = version;
}

} // namespace

TEST(MacPath, CutsFoldersFromTheExecutablesPath)
{
    fakePlatform().bundleExecutablePath = "/A.app/Contents/MacOS/x";
    EXPECT_EQ(MacPath::getAppDirPath(), "/A.app/Contents/MacOS/");
    EXPECT_EQ(MacPath::getAppContentsDirPath(), "/A.app/Contents/");
    EXPECT_EQ(MacUtils::getResourcePath("x.png"), "/A.app/Contents/MacOS/x.png");

    fakePlatform().bundleExecutablePath = "/x";
    EXPECT_EQ(MacPath::getAppDirPath(), "/");
    EXPECT_EQ(MacPath::getAppContentsDirPath(), "");
    fakePlatform().bundleExecutablePath = "";
    EXPECT_EQ(MacPath::getAppDirPath(), "");
    EXPECT_EQ(MacUtils::getResourcePath("x.png"), "/x.png");
}

TEST(MacUtils, MainApplicationIsTheOutermostBundle)
{
    fakePlatform().bundleExecutablePath = "/Applications/A.app/Contents/Helpers/B.app/Contents/MacOS/b";
    EXPECT_EQ(MacUtils::GetMainAppBasicPath(), "/Applications/A.app");
    EXPECT_EQ(MacUtils::GetMainAppPListFullPath(), "/Applications/A.app/Contents/Info.plist");

    fakePlatform().info[""]["CFBundleShortVersionString"] = "1.1.1";
    fakePlatform().info["/Applications/A.app/Contents/Info.plist"]["CFBundleShortVersionString"] = "2.5.31";
    EXPECT_EQ(MacUtils::GetBundleVersionInt(true), 2050031);
    EXPECT_EQ(MacUtils::GetBundleVersionInt(false), 1010001);

    fakePlatform().bundleExecutablePath = "/usr/bin/b";
    EXPECT_EQ(MacUtils::GetMainAppBasicPath(), "");
    EXPECT_EQ(MacUtils::GetMainAppPListFullPath(), "");
    EXPECT_EQ(MacUtils::GetMainBundleVersionString(), "");
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

TEST(MacUtils, SymLinkRuleOnPaths)
{
    EXPECT_EQ(getAppDirByMacOSSymLinkPath("/A.app/Contents/MacOS_SymLink"), "/A.app");
    EXPECT_EQ(getAppDirByMacOSSymLinkPath("/A.app/Contents/MacOS_SymLink/"), "/A.app");
    EXPECT_TRUE(getAppDirByMacOSSymLinkPath("/A.app/MacOS_SymLink/x").isNull());
    EXPECT_TRUE(getAppDirByMacOSSymLinkPath(QString()).isNull());
}

TEST(MacUtils, VersionNumbersFillFourSlots)
{
    unsigned short a = 9, b = 9, c = 9, d = 9;
    setVersion("1.70000.2");
    EXPECT_FALSE(MacUtils::GetBundleVersionNumbers(&a, &b, &c, &d, false));
    EXPECT_EQ(a, 9) << "nothing is written on failure";
    setVersion("1.2.65536");
    EXPECT_FALSE(MacUtils::GetBundleVersionNumbers(&a, &b, &c, &d, false));

    setVersion("3.1.65535");
    EXPECT_TRUE(MacUtils::GetBundleVersionNumbers(&a, &b, &c, &d, false));
    EXPECT_EQ((std::vector<int>{a, b, c, d}), (std::vector<int>{3, 1, 0, 65535}));
    EXPECT_TRUE(MacUtils::GetBundleVersionNumbers(nullptr, nullptr, nullptr, nullptr, false));
    EXPECT_EQ(MacUtils::GetBundleVersionTail(false), 65535);

    setVersion("1.70000.2");
    EXPECT_EQ(MacUtils::GetBundleVersionInt(false), 701000002) << "no range check here";
    setVersion("none");
    EXPECT_EQ(MacUtils::GetBundleVersionInt(false), 0);
    EXPECT_EQ(MacUtils::GetBundleVersionTail(false), 0);
}

TEST(MacUtils, TicksAreScaledAndTheTimebaseReadOnce)
{
    fakePlatform().timebase = {125, 3};
    fakePlatform().ticks = 24'000'000;
    EXPECT_EQ(MacUtils::GetTickCount(), 1000U);
    fakePlatform().ticks = 48'000'001;
    EXPECT_EQ(MacUtils::GetTickCount(), 2000U);
    EXPECT_EQ(fakePlatform().timebaseReads, 1);
}

TEST(MacUtils, SharedMemorySizeIsWhatTheCommandPrints)
{
    fakePlatform().sharedMemorySizeCommand = "echo 18446744073692774399";
    EXPECT_EQ(MacUtils::getSystemSharedMemorySize(), 18446744073692774399U);
    for (const char *command : {"true", "exit 3", "/nonexistent/command 2>/dev/null", "echo none"}) {
        fakePlatform().sharedMemorySizeCommand = command;
        EXPECT_EQ(MacUtils::getSystemSharedMemorySize(), 0U) << command;
    }
}

TEST(MacUtils, RenamesMenuItemsByTitle)
{
    fakePlatform().submenuItems = {"Open", "Close", "Gone"};
    updateMacOSMenuTitles({});
    EXPECT_EQ(fakePlatform().submenuItems, (std::vector<QString>{"Open", "Close", "Gone"}));
    updateMacOSMenuTitles({{"Open", "Öffnen"}, {"Gone", ""}});
    EXPECT_EQ(fakePlatform().submenuItems, (std::vector<QString>{"Öffnen", "Close", ""}));
}

TEST(MacUtils, AsksThePlatformAboutTheSystem)
{
    auto &platform = fakePlatform();
    platform.secondsSinceLastInput = 1.0;
    EXPECT_FALSE(isMainThreadIdle()) << "only after more than a second";
    platform.secondsSinceLastInput = 1.001;
    EXPECT_TRUE(isMainThreadIdle());

    EXPECT_FALSE(MacUtils::checkNetworkAvailable());
    for (const bool reachable : {false, true}) {
        for (const bool connectionRequired : {false, true}) {
            platform.reachability = platform::ReachabilityFlags{reachable, connectionRequired};
            EXPECT_EQ(MacUtils::checkNetworkAvailable(), reachable && !connectionRequired);
        }
    }

    platform.runningApplications = {"com.example.reader"};
    EXPECT_TRUE(MacUtils::IsProcessRunning("com.example.reader"));
    EXPECT_FALSE(MacUtils::IsProcessRunning("com.example")) << "whole identifiers only";
    EXPECT_FALSE(IsProcessRunningOC(QString()));

    platform.opensUrls = false;
    EXPECT_FALSE(extendRequestAuthorization());
}
