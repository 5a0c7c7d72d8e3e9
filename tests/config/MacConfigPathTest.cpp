#include "config/MacConfigPath.h"

#include "config/ConfigFileUtil.h"
#include "config/GlobalConfigFile.h"
#include "config/MacGlobalConfig.h"
#include "config/MacGlobalSetting.h"
#include "config/MacReg.h"
#include "config/PdfReaderProductInfo.h"
#include "paths/MacSandbox.h"
#include "paths/PathUtils.h"
#include "runtime/CommonFileLog.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/OwnProcess.h"

#include <array>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

using test::FakeBundle;
using test::fakePlatform;

TEST(MacConfigPath, FollowsFromTheExecutable)
{
    std::string deep; // longer than the buffer that is tried first
    while (deep.size() < 1500)
        deep += std::string(100, 'd') + "/";
    const std::array<std::string, 3> rows[] = {
        // executable, main bundle, its name
        {"A.app/Contents/Library/B.app/Contents/MacOS/b", "A.app/", "A"},
        {".app/Contents/MacOS/foo", ".app/", "PDF Orvell"},
        {deep + "Foo.app/Contents/MacOS/foo", deep + "Foo.app/", "Foo"},
        {"bin/tool", "", ""},
    };
    const auto check = [](const std::string &executable, const std::string &app, const std::string &name) {
        const FakeBundle bundle(executable);
        const MacConfigPath *paths = MacConfigPath::GetInstance();
        const std::string root = app.empty() ? "" : bundle / app;
        const std::string resources = app.empty() ? "" : root + "Contents/Resources/";
        EXPECT_EQ(paths->GetExeDir() + paths->GetExeName(), bundle / executable);
        EXPECT_EQ(paths->GetMainAppRootDir(), root);
        EXPECT_EQ(paths->GetMainAppName(), name);
        EXPECT_EQ(paths->GetUserDataDir(), bundle / "support/" + name + "/");
        EXPECT_EQ(paths->GetAppConfigDir(), resources);
        EXPECT_EQ(paths->GetAppConfigPath("a\\x"), app.empty() ? "" : resources + "a/x");
        EXPECT_EQ(paths->GetExeFullPath("a\\x"), app.empty() ? "a/x" : root + "Contents/a/x");
        EXPECT_EQ(GetDatPath(), resources + "mk.dat");
        EXPECT_FALSE(fs::exists(bundle / "support")) << "asking for paths must not create them";
    };
    for (const auto &row : rows)
        EXPECT_TRUE(test::succeedsInOwnProcess([&] { check(row[0], row[1], row[2]); })) << row[0];
}

TEST(MacConfigPath, UnknownExecutableLeavesDefaults)
{
    fakePlatform().executablePath = "";
    fakePlatform().applicationSupportDirectory = "";
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    EXPECT_EQ(paths->GetLogPath(), "~/Library/Application Support//pdforvell.log");
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
    fs::current_path(bundle.dir().path());
    test::writeFile(bundle / "mk.dat", "[common]\nenable_sbx=1\n"); // not the one
    fs::remove(fakePlatform().executablePath);
    EXPECT_THROW(MacConfigPath::GetCurrentExePath(), fs::filesystem_error);
    EXPECT_THROW(MacConfigPath::GetInstance(), fs::filesystem_error);
    // Each first in its process.
    const std::pair<const char *, bool (*)()> rows[] = {
        {"mk.dat", [] { return GetDatPath().empty() && GetIntValueFromMKDat("common", "enable_sbx", 7) == 7; }},
        {"switch", [] { return !MacGlobalConfig::isInternationalApp(); }},
        {"group", [] { return !MacGlobalConfig::GetShareGroupName().empty(); }},
        {"sandbox", [] { return !MacSandbox::isSandBox() && !MacSandbox::getSharedPath("").empty(); }},
        {"address", [] { return !MacGlobalUrl::GetDefSvrHost(nullptr).empty() && !IsInternationalUseTestServer(); }},
        {"language",
         [] { return MacGlobalSetting::GetCurrentLanguage() == "zh" && !MacGlobalSetting::IsEnableDebug(); }},
        {"list", [] { return MacGlobalSetting::GetSupportLanguageList().empty(); }},
        {"registry", [] { return !MacReg().open("common", false); }},
        {"log", [] { return CommonFileLog::WriteLog("x"), !CommonFileLog::IsLogEnable(); }},
        {"setting", [] { return ConfigFileUtil::GetLocalAppCfgValueInt("a/b", 7) == 7; }},
        {"record", [] { return PdfReaderProductInfo::GetInstance()->GetProductEdition() == 3; }},
        {"file", [] { return PathUtils::getSealDir() == "seal/" && PathUtils::getWelcomeFilePath().isEmpty(); }},
    };
    for (const auto &[name, holds] : rows)
        EXPECT_TRUE(test::succeedsInOwnProcess([&, check = holds] { EXPECT_TRUE(check()); })) << name;
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
