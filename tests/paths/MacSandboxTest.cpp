#include "paths/MacSandbox.h"

#include "tests/support/FakePlatform.h"
#include "tests/support/OwnProcess.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

using test::fakePlatform;

using Lines = std::vector<std::string>;

TEST(MacSandbox, HomeIsTheUsersOwn)
{
    const std::array<const char *, 3> rows[] = {
        // database, HOME, answer
        {"/home/a", "/x/y", "/home/a"},
        {"", "/Users/anna/Library/Containers/x/Data", "/Users/anna"},
        {"", "/x", "/Users/u"},
    };
    ::setenv("USER", "u", 1);
    for (const auto &[database, home, answer] : rows) {
        fakePlatform().homeDirectoryOfUser = database;
        ::setenv("HOME", home, 1);
        EXPECT_TRUE(test::succeedsInOwnProcess([answer = answer] { EXPECT_EQ(MacSandbox::getHomePath(), answer); }));
    }
}

TEST(MacSandbox, OnlyTypedFoldersAreCreated)
{
    const test::TempDir dir;
    test::writeFile(dir / "file", "");
    fakePlatform().groupContainers = {{"x", dir / "x"}, {"file", dir / "file"}};
    fakePlatform().homeDirectoryOfUser = dir / "home";
    EXPECT_EQ(MacSandbox::getSharedPath("y"), dir / "home/Library/Group Containers/y");
    EXPECT_EQ(MacSandbox::getSharedPath("x"), dir / "x");
    EXPECT_FALSE(fs::exists(dir / "x"));
    EXPECT_EQ(MacSandbox::getSharedPath(SharedPath::Data, "x"), dir / "x/data");
    EXPECT_EQ(MacSandbox::getSharedPath(SharedPath::Type(9), "y"), MacSandbox::getSharedPath("y"));
    EXPECT_TRUE(fs::is_directory(dir / "x/data"));
    EXPECT_EQ(MacSandbox::getSharedPath(SharedPath::Temp, "file"), dir / "file/temp") << "cannot be created";
    fakePlatform().groupContainers.clear();
    EXPECT_EQ(MacSandbox::getSharedPath("x"), dir / "x") << "the first answer stays";
}

TEST(MacSandbox, PermissionMeansExactlyTheFolderAskedFor)
{
    fakePlatform().panelAnswer = Lines{"/x/b"};
    EXPECT_TRUE(MacSandbox::requestPermission("/x/a/../b/", ""));
    EXPECT_EQ(fakePlatform().openPanels[0].startFolder, "/x/b");
    EXPECT_EQ(fakePlatform().openPanels[0].prompt, "授予访问权限");
    EXPECT_TRUE(fakePlatform().openPanels[0].foldersOnly);
    fakePlatform().panelAnswer = Lines{"/"};
    EXPECT_FALSE(MacSandbox::requestPermission("/x//b/.//", ""));
    EXPECT_EQ(fakePlatform().userDefaults.count("vant_pdf_/"), 1U) << "a refused folder is bookmarked as well";

    fakePlatform().panelAnswer.reset();
    EXPECT_FALSE(MacSandbox::requestPermission("/", "Go")) << "cancelled";
    EXPECT_EQ(fakePlatform().openPanels[2].prompt, "Go");
}

TEST(MacSandbox, UrlsAreEncodedForAQuery)
{
    const Lines none;
    EXPECT_TRUE(MacSandbox::openURL({"", "x:!$&'()*+,-./0:;=?@_~%20#[] \"<>\\^`{|}\n\x7fé😀", none}, nullptr));
    EXPECT_EQ(fakePlatform().launches[0].first.url,
              "x:!$&'()*+,-./0:;=?@_~%2520%23%5B%5D%20%22%3C%3E%5C%5E%60%7B%7C%7D%0A%7F%C3%A9%F0%9F%98%80");
    for (const char *bad : {"", "x:\xff", "x:\xed\xa0\x80"})
        EXPECT_FALSE(MacSandbox::openURL({"", bad, none}, nullptr)) << bad;
    EXPECT_THROW(fakePlatform().launches[0].second({}), std::bad_function_call) << "an empty completion";
}

TEST(MacSandbox, LaunchesAsAskedAndReports)
{
    const Lines arguments{"-a", "b c"};
    std::vector<int> reported;
    const auto completion = [&reported](int pid) { reported.push_back(pid); };
    EXPECT_FALSE(MacSandbox::openURL({"/no app", "x:", arguments}, completion));
    EXPECT_FALSE(MacSandbox::openApp({"", "x:", arguments}, completion));
    EXPECT_TRUE(MacSandbox::openURL({"/", "x:", arguments, false, true}, completion));
    EXPECT_TRUE(MacSandbox::openApp({"/", "x:", arguments, false, true}, completion));
    ASSERT_EQ(fakePlatform().launches.size(), 2U);

    const auto said = [](const platform::LaunchRequest &request) {
        return std::tuple(request.url, request.arguments, request.hides, request.activates, request.createsNewInstance);
    };
    EXPECT_EQ(said(fakePlatform().launches[0].first), std::tuple("x:", Lines{}, true, false, true));
    EXPECT_EQ(said(fakePlatform().launches[1].first), std::tuple("", arguments, false, true, true));
    for (const auto &[request, handler] : fakePlatform().launches) {
        handler({true, "A", 12});
        handler({false, "none", 0});
    }
    EXPECT_EQ(reported, (std::vector<int>{12, -1, 12, -1}));
    EXPECT_EQ(fakePlatform().systemLog,
              (Lines{"OpenURLWithNSWorkspace successfully: A", "OpenURLWithNSWorkspace: none",
                     "RunWithNSWorkspace successfully: A", "RunWithNSWorkspace: none"}));
}

TEST(MacSandbox, WaitsUntilTheProcessEndsOrTimeFallsBelowZero)
{
    const std::array<int, 4> rows[] = {
        // time-out, looks while running, result, looks
        {500, 100, -1, 4},
        {400, 4, 0, 5},
        {0, 0, 0, 1},
    };
    for (const auto &[timeout, whileRunning, result, looks] : rows) {
        fakePlatform().looks = 0;
        fakePlatform().looksWhileRunning = whileRunning;
        EXPECT_EQ(MacSandbox::waitProcFinish(7, timeout), result) << timeout;
        EXPECT_EQ(fakePlatform().looks, looks) << timeout;
    }
}
