#include "config/MacConfigPath.h"

#include "config/ConfigFileUtil.h"
#include "config/GlobalConfigFile.h"
#include "config/Locations_p.h"
#include "config/MacGlobalSetting.h"
#include "config/MacReg.h"
#include "config/PdfReaderProductInfo.h"
#include "paths/MacSandbox.h"
#include "paths/PathUtils.h"
#include "runtime/CommonFileLog.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/Concurrency.h"
#include "tests/support/FakePlatform.h"

#include <array>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

using test::FakeBundle;
using test::fakePlatform;

TEST(MacConfigPath, FollowsFromTheExecutable)
{
    const std::array<std::string, 3> rows[] = {
        // executable, application, its name
        {"A.app/Contents/Library/B.app/Contents/MacOS/b", "A.app/", "A"},
        {".app/Contents/MacOS/foo", ".app/", "PDF Orvell"},
        {"bin/tool", "", ""},
    };
    for (const auto &[executable, app, name] : rows)
        EXPECT_TRUE(test::succeedsInProcesses(1, [executable = executable, app = app, name = name](int) {
            const FakeBundle bundle(executable);
            const MacConfigPath *paths = MacConfigPath::GetInstance();
            const std::string contents = app.empty() ? "" : bundle / app + "Contents/";
            const std::string resources = app.empty() ? "" : contents + "Resources/";
            EXPECT_EQ(paths->GetExeDir() + paths->GetExeName(), bundle / executable);
            EXPECT_EQ(paths->GetMainAppRootDir(), app.empty() ? "" : bundle / app);
            EXPECT_EQ(paths->GetMainAppName(), name);
            EXPECT_EQ(paths->GetUserDataDir(), bundle / "support/" + name + "/");
            EXPECT_EQ(paths->GetAppConfigPath("a\\x"), app.empty() ? "" : resources + "a/x");
            EXPECT_EQ(paths->GetExeFullPath("a\\x"), contents + "a/x");
            EXPECT_EQ(paths->GetAppConfigDir() + GetDatPath(), resources + resources + "mk.dat");
            EXPECT_EQ(locations::parentAppDir().toStdString(),
                      app.empty() ? bundle / "bin/" : bundle / app + "Contents/MacOS/");
            EXPECT_FALSE(fs::exists(bundle / "support")) << "asking for paths must not create them";
        })) << executable;
}

TEST(MacConfigPath, UnknownExecutableLeavesDefaults)
{
    fakePlatform().executablePath.reset();
    fakePlatform().applicationSupportDirectory = "";
    EXPECT_EQ(MacConfigPath::GetInstance()->GetLogPath(), "~/Library/Application Support//pdforvell.log");
}

TEST(MacConfigPath, SymbolicLinksToTheExecutableAreResolved)
{
    const FakeBundle bundle("Über uns/Foo.app/Contents/MacOS/foo");
    fs::create_symlink(bundle / "Über uns", bundle / "link");
    fakePlatform().executablePath = bundle / "link/Foo.app/Contents/../Contents/./MacOS/foo";
    MacConfigPath *paths = MacConfigPath::GetInstance();
    EXPECT_EQ(paths->GetMainAppRootDir(), bundle / "Über uns/Foo.app/");

    fs::remove(bundle / "link");
    fakePlatform().applicationSupportDirectory = "/elsewhere";
    EXPECT_EQ(MacConfigPath::GetCurrentExePath(), bundle / "Über uns/Foo.app/Contents/MacOS/foo") << "remembered";
    paths->InitMainAppRootDir();
    paths->InitUserDataDir();
    EXPECT_EQ(paths->GetUserDataDir(), "/elsewhere/Foo/") << "is asked for again";
}

TEST(MacConfigPath, OnlyItThrowsWhenTheExecutableWasRemovedBefore)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=1\nenable_sbx=1\napp_international=1\n");
    fs::current_path(bundle.path());
    test::writeFile(bundle / "mk.dat", "[common]\nenable_sbx=1\n"); // not the one
    fs::remove(*fakePlatform().executablePath);
    EXPECT_THROW(MacConfigPath::GetCurrentExePath(), fs::filesystem_error);
    EXPECT_THROW(MacConfigPath::GetInstance(), fs::filesystem_error);
    EXPECT_EQ(GetDatPath(), "");
    EXPECT_EQ(GetIntValueFromMKDat("common", "enable_sbx", 7), 7);
    CommonFileLog::WriteLog("x");
    EXPECT_NE(MacSandbox::getSharedPath(""), "");
    EXPECT_EQ(PathUtils::getSealDir() + PathUtils::getConfigDataPath() + PathUtils::getWelcomeFilePath(), "seal/");
    EXPECT_FALSE(fs::exists("seal"));
    EXPECT_NE(MacGlobalUrl::GetDefSvrHost(nullptr), "");
    EXPECT_TRUE(MacGlobalSetting::GetSupportLanguageList().empty());
    EXPECT_EQ((std::vector{CommonFileLog::IsLogEnable(), MacSandbox::isSandBox(), IsInternationalUseTestServer(),
                           MacGlobalSetting::IsEnableDebug(), MacReg().open("common", false)}),
              std::vector(5, false));
    EXPECT_EQ(ConfigFileUtil::GetLocalAppCfgValueInt("a/b", 7), 7);
    EXPECT_TRUE(PdfReaderProductInfo::GetInstance()->IsIndependentEdition());
}

TEST(MacConfigPath, AnswersAreLogged)
{
    const FakeBundle bundle;
    const std::string data = bundle.makeUserDataDir();
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    test::writeFile(paths->GetLogPath(), "");
    EXPECT_EQ(paths->GetUserDataPath("c\\d"), data + "c/d");
    EXPECT_TRUE(paths->IsAppDataFileExist("foo.log"));
    EXPECT_FALSE(paths->IsAppDataFileExist(".\\foo.log")) << "names are not normalised here";
    EXPECT_FALSE(paths->IsAppDataFileExist("")) << "the folder exists, but no name was given";
    EXPECT_EQ(test::logMessages(data + "foo.log"),
              "MacConfigPath::GetUserDataPath -> " + data + "c/d\nIsAppDataFileExist return 1, path -> " + data
                  + "foo.log\nIsAppDataFileExist return 0, path -> " + data + ".\\foo.log\n");
}

TEST(MacConfigPath, ReplaceAllStopsAfterSixtyFour)
{
    std::string text(100, '\\');
    EXPECT_EQ(MacConfigPath::ReplaceAll(text, "\\", "/"), 64);
    EXPECT_EQ(text, std::string(64, '/') + std::string(36, '\\'));
    EXPECT_EQ(MacConfigPath::ReplaceAll(text = "aa", "a", "aa"), 2) << "inserted text is not searched again";
    EXPECT_EQ(MacConfigPath::ReplaceAll(text = "x", "", "y"), 1);
    EXPECT_EQ(text, "yx");
}
