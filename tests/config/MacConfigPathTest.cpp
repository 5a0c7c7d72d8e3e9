#include "config/MacConfigPath.h"

#include "config/GlobalConfigFile.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

using test::FakeBundle;
using test::fakePlatform;

namespace {

struct Installation
{
    const char *name;
    std::string executable, root, appName; // relative to the folder that holds all
};

std::string deep() // longer than the buffer that is tried first
{
    std::string path;
    while (path.size() < 1500)
        path += std::string(100, 'd') + "/";
    return path;
}

const Installation kInstallations[] = {
    {"InABundle", "Foo.app/Contents/MacOS/foo", "Foo.app/", "Foo"},
    {"InTwoBundles", "A.app/Contents/Library/B.app/Contents/MacOS/b", "A.app/", "A"},
    {"InANamelessBundle", ".app/Contents/MacOS/foo", ".app/", "PDF Orvell"},
    {"Deep", deep() + "Foo.app/Contents/MacOS/foo", deep() + "Foo.app/", "Foo"},
    {"OutsideABundle", "bin/tool", "", ""},
};

void PrintTo(const Installation &installation, std::ostream *out)
{
    *out << installation.name;
}

/// The locations are worked out once per process, hence one executable per case.
class MacConfigPathOf : public testing::TestWithParam<Installation>
{
};

INSTANTIATE_TEST_SUITE_P(, MacConfigPathOf, testing::ValuesIn(kInstallations),
                         [](const auto &row) { return row.param.name; });

} // namespace

TEST_P(MacConfigPathOf, FollowsFromTheExecutable)
{
    const FakeBundle bundle(GetParam().executable);
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    const std::string root = GetParam().root.empty() ? "" : bundle / GetParam().root;
    const std::string resources = root.empty() ? "" : root + "Contents/Resources/";
    EXPECT_EQ(paths->GetExeDir() + paths->GetExeName(), bundle / GetParam().executable);
    EXPECT_EQ(paths->GetMainAppRootDir(), root);
    EXPECT_EQ(paths->GetMainAppName(), GetParam().appName);
    EXPECT_EQ(paths->GetUserDataDir(), bundle / "support/" + GetParam().appName + "/");
    EXPECT_EQ(paths->GetAppConfigDir(), resources);
    EXPECT_EQ(paths->GetAppConfigPath("a\\x"), root.empty() ? "" : resources + "a/x");
    EXPECT_EQ(paths->GetExeFullPath("a\\x"), root.empty() ? "a/x" : root + "Contents/a/x");
    EXPECT_EQ(GetDatPath(), resources + "mk.dat");
    EXPECT_FALSE(fs::exists(bundle / "support")) << "asking for paths must not create them";
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

TEST(MacConfigPath, SymbolicLinksToTheExecutableAreResolved)
{
    const FakeBundle bundle("Über uns/Foo.app/Contents/MacOS/foo");
    fs::create_symlink(bundle / "Über uns", bundle / "link");
    fakePlatform().executablePath = bundle / "link/Foo.app/Contents/../Contents/./MacOS/foo";
    MacConfigPath *paths = MacConfigPath::GetInstance();
    EXPECT_EQ(paths->GetMainAppRootDir(), bundle / "Über uns/Foo.app/");

    fs::remove(bundle / "link");
    fakePlatform().applicationSupportDirectory = "/elsewhere";
    EXPECT_THROW(static_cast<void>(MacConfigPath::GetCurrentExePath()), fs::filesystem_error);
    paths->InitMainAppRootDir();
    paths->InitUserDataDir();
    EXPECT_EQ(paths->GetUserDataDir(), "/elsewhere/Foo/") << "is asked for again";
}

TEST(MacConfigPath, AnswersAreLogged)
{
    const FakeBundle bundle;
    const std::string data = bundle.makeUserDataDir();
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    test::writeFile(paths->GetLogPath(), "");
    static_cast<void>(paths->GetAppConfigPath("a"));
    static_cast<void>(paths->GetExeFullPath("b"));
    EXPECT_EQ(paths->GetUserDataPath("c\\d"), data + "c/d");
    EXPECT_TRUE(paths->IsAppDataFileExist("foo.log"));
    EXPECT_FALSE(paths->IsAppDataFileExist(".\\foo.log")) << "names are not normalised here";
    EXPECT_FALSE(paths->IsAppDataFileExist("")) << "the folder exists, but no name was given";

    EXPECT_EQ(test::logMessages(data + "foo.log"),
              "MacConfigPath::GetAppConfigPath -> " + bundle / "Foo.app/Contents/Resources/a"
                  + "\nMacConfigPath::GetExeFullPath -> " + bundle / "Foo.app/Contents/b"
                  + "\nMacConfigPath::GetUserDataPath -> " + data + "c/d\nIsAppDataFileExist return 1, path -> " + data
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
