#include "config/MacConfigPath.h"

#include "config/GlobalConfigFile.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

#include <sstream>

namespace fs = std::filesystem;

using test::FakeBundle;
using test::fakePlatform;

TEST(MacConfigPath, FindsEverythingFromTheExecutableInsideABundle)
{
    const FakeBundle bundle;
    const MacConfigPath *paths = MacConfigPath::GetInstance();

    EXPECT_EQ(paths->GetExeDir(), bundle / "Foo.app/Contents/MacOS/");
    EXPECT_EQ(paths->GetExeName(), "foo");
    EXPECT_EQ(paths->GetMainAppRootDir(), bundle / "Foo.app/");
    EXPECT_EQ(paths->GetMainAppName(), "Foo");
    EXPECT_EQ(paths->GetAppConfigDir(), bundle / "Foo.app/Contents/Resources/");
    EXPECT_EQ(paths->GetUserDataDir(), bundle / "support/Foo/");
    EXPECT_EQ(paths->GetLogPath(), bundle / "support/Foo/foo.log");
    EXPECT_EQ(GetDatPath(), bundle / "Foo.app/Contents/Resources/mk.dat");

    EXPECT_EQ(paths->GetAppConfigPath("cfgdata\\language.json"),
              bundle / "Foo.app/Contents/Resources/cfgdata/language.json");
    EXPECT_EQ(paths->GetExeFullPath("MacOS\\helper"), bundle / "Foo.app/Contents/MacOS/helper");
    EXPECT_EQ(paths->GetUserDataPath("a\\b"), bundle / "support/Foo/a/b");
    EXPECT_FALSE(fs::exists(bundle / "support")) << "asking for paths must not create them";
}

TEST(MacConfigPath, FirstOfNestedBundlesIsTheMainOne)
{
    const FakeBundle bundle("A.app/Contents/Library/B.app/Contents/MacOS/b");
    EXPECT_EQ(MacConfigPath::GetInstance()->GetMainAppRootDir(), bundle / "A.app/");
    EXPECT_EQ(MacConfigPath::GetInstance()->GetMainAppName(), "A");
    EXPECT_EQ(GetDatPath(), bundle / "A.app/Contents/Resources/mk.dat");
}

TEST(MacConfigPath, ExecutableOutsideABundleHasNoBundle)
{
    const FakeBundle bundle("bin/tool");
    const MacConfigPath *paths = MacConfigPath::GetInstance();

    EXPECT_EQ(paths->GetMainAppRootDir(), "");
    EXPECT_EQ(paths->GetMainAppName(), "");
    EXPECT_EQ(paths->GetAppConfigDir(), "");
    EXPECT_EQ(paths->GetAppConfigPath("x"), "");
    EXPECT_EQ(paths->GetExeFullPath("a\\x"), "a/x");
    EXPECT_EQ(paths->GetUserDataDir(), bundle / "support//");
    EXPECT_EQ(GetDatPath(), "mk.dat");
}

TEST(MacConfigPath, BundleWithoutANameGetsTheProductsOne)
{
    const FakeBundle bundle(".app/Contents/MacOS/foo");
    EXPECT_EQ(MacConfigPath::GetInstance()->GetMainAppName(), "PDF Orvell");
    EXPECT_EQ(MacConfigPath::GetInstance()->GetMainAppRootDir(), bundle / ".app/");
}

TEST(MacConfigPath, UnknownExecutableLeavesDefaults)
{
    fakePlatform().executablePath = "";
    fakePlatform().applicationSupportDirectory = "";
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    EXPECT_EQ(paths->GetExeDir(), "");
    EXPECT_EQ(paths->GetUserDataDir(), "~/Library/Application Support//");
    EXPECT_EQ(paths->GetLogPath(), "~/Library/Application Support//pdforvell.log");
}

TEST(MacConfigPath, ResolvesSymbolicLinksToTheExecutable)
{
    const FakeBundle bundle("Über uns/Foo.app/Contents/MacOS/foo");
    fs::create_symlink(bundle / "Über uns", bundle / "link");
    fakePlatform().executablePath = bundle / "link/Foo.app/Contents/../Contents/./MacOS/foo";
    EXPECT_EQ(MacConfigPath::GetInstance()->GetMainAppRootDir(), bundle / "Über uns/Foo.app/");
}

TEST(MacConfigPath, PathLongerThanTheFixedBuffer)
{
    std::string deep;
    while (deep.size() < 1500)
        deep += std::string(100, 'd') + "/";
    const FakeBundle bundle(deep + "Foo.app/Contents/MacOS/foo");
    EXPECT_EQ(MacConfigPath::GetInstance()->GetMainAppRootDir(), bundle / (deep + "Foo.app/"));
}

TEST(MacConfigPath, UserDataFolderIsAskedForAgainWhenInitialisedAgain)
{
    const FakeBundle bundle;
    MacConfigPath *paths = MacConfigPath::GetInstance();
    fakePlatform().applicationSupportDirectory = "/elsewhere";
    paths->InitMainAppRootDir();
    paths->InitUserDataDir();
    EXPECT_EQ(paths->GetUserDataDir(), "/elsewhere/Foo/");
}

TEST(MacConfigPath, RemovedExecutableIsReported)
{
    const FakeBundle bundle;
    fs::remove(fakePlatform().executablePath);
    EXPECT_THROW(static_cast<void>(MacConfigPath::GetCurrentExePath()), fs::filesystem_error);
}

TEST(MacConfigPath, FindsFilesOfTheUsersData)
{
    const FakeBundle bundle;
    test::writeFile(bundle.makeUserDataDir() + "marker", "");
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    EXPECT_TRUE(paths->IsAppDataFileExist("marker"));
    EXPECT_FALSE(paths->IsAppDataFileExist("other"));
    EXPECT_FALSE(paths->IsAppDataFileExist("")) << "the folder itself exists, but no name was given";
    EXPECT_FALSE(paths->IsAppDataFileExist(".\\marker")) << "names are not normalised here";
}

TEST(MacConfigPath, LogsItsAnswers)
{
    const FakeBundle bundle;
    const std::string data = bundle.makeUserDataDir();
    test::writeFile(data + "foo.log", "");
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    static_cast<void>(paths->GetAppConfigPath("a"));
    static_cast<void>(paths->GetExeFullPath("b"));
    static_cast<void>(paths->GetUserDataPath("c"));
    static_cast<void>(paths->IsAppDataFileExist("d"));
    static_cast<void>(paths->IsAppDataFileExist(""));
    static_cast<void>(paths->GetLogPath());

    std::string messages;
    std::istringstream lines(test::readFile(data + "foo.log"));
    for (std::string line; std::getline(lines, line);)
        messages += line.substr(line.find("]  ") + 3) + "\n";
    EXPECT_EQ(messages,
              "MacConfigPath::GetAppConfigPath -> " + bundle / "Foo.app/Contents/Resources/a" + "\n"
                  + "MacConfigPath::GetExeFullPath -> " + bundle / "Foo.app/Contents/b" + "\n"
                  + "MacConfigPath::GetUserDataPath -> " + data + "c\n" + "IsAppDataFileExist return 0, path -> " + data
                  + "d\n");
}

TEST(MacConfigPath, ReplaceAllStopsAfterSixtyFour)
{
    std::string text(100, '\\');
    EXPECT_EQ(MacConfigPath::ReplaceAll(text, "\\", "/"), 64);
    EXPECT_EQ(text, std::string(64, '/') + std::string(36, '\\'));

    std::string growing = "aa";
    EXPECT_EQ(MacConfigPath::ReplaceAll(growing, "a", "aa"), 2) << "inserted text is not searched again";
    EXPECT_EQ(growing, "aaaa");

    std::string front = "x";
    EXPECT_EQ(MacConfigPath::ReplaceAll(front, "", "y"), 1);
    EXPECT_EQ(front, "yx");
}
