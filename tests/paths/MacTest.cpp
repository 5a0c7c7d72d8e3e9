#include "paths/MacBookmark.h"
#include "paths/MacPath.h"
#include "paths/MacSandbox.h"
#include "paths/MacUtils.h"
#include "tests/support/Concurrency.h"
#include "tests/support/FakePlatform.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>

// The rules that hold on every platform.

using test::fakePlatform;

using Lines = std::vector<std::string>;

static void setVersion(const std::string &version)
{
    fakePlatform().info[""]["CFBundleShortVersionString"] = version;
}

static void store(const std::string &path, const std::string &data)
{
    fakePlatform().userDefaults["vant_pdf_" + path] = {data.begin(), data.end()};
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
    EXPECT_EQ(std::pair(MacUtils::GetBundleVersionInt(true), MacUtils::GetBundleVersionTail(true)),
              std::pair(2050031, 31));
    EXPECT_EQ(MacUtils::GetBundleVersionInt(false), 1010001);

    fakePlatform().bundleExecutablePath = "/usr/bin/b";
    EXPECT_EQ(MacUtils::GetMainAppPListFullPath(), "");
}

TEST(MacUtils, HelpersInTheSymLinkFolderAskTheirOwner)
{
    fakePlatform().info["/A.app"] = {{"CFBundleName", "Owner"}, {"CFBundleShortVersionString", "3.1.9"}};
    fakePlatform().bundlePath = "/A.app/Contents/MacOS_SymLink";
    EXPECT_EQ(MacUtils::GetAppName(), "Owner");
    EXPECT_EQ(MacUtils::GetBundleVersionString(), "3.1.9");
    fakePlatform().info[""]["CFBundleName"] = "Own";
    EXPECT_EQ(MacUtils::GetAppName(), "Own") << "the running bundle's own value comes first";

    fakePlatform().bundlePath = "/A.app/Contents/MacOS";
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
    fakePlatform().nanoseconds = 2'000'999'999;
    EXPECT_EQ(MacUtils::GetTickCount(), 2000U);

    fakePlatform().submenuItems = {"Open", "Close", "Gone"};
    updateMacOSMenuTitles({{"Open", "Öffnen"}, {"Gone", ""}});
    EXPECT_EQ(fakePlatform().submenuItems, (std::vector<QString>{"Öffnen", "Close", ""}));

    fakePlatform().secondsSinceLastInput = 1.0;
    EXPECT_FALSE(isMainThreadIdle()) << "only after more than a second";
    EXPECT_FALSE(MacUtils::checkNetworkAvailable()) << "not known";
    for (const bool connectionRequired : {false, true}) {
        fakePlatform().reachability = platform::ReachabilityFlags{true, connectionRequired};
        EXPECT_EQ(MacUtils::checkNetworkAvailable(), !connectionRequired);
    }
    EXPECT_TRUE(IsProcessRunningOC("com.example.running"));
}

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
        EXPECT_TRUE(
            test::succeedsInProcesses(1, [answer = answer](int) { EXPECT_EQ(MacSandbox::getHomePath(), answer); }));
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
    EXPECT_FALSE(std::filesystem::exists(dir / "x"));
    EXPECT_EQ(MacSandbox::getSharedPath(SharedPath::Data, "x"), dir / "x/data");
    EXPECT_EQ(MacSandbox::getSharedPath(SharedPath::Type(9), "y"), MacSandbox::getSharedPath("y"));
    EXPECT_TRUE(std::filesystem::is_directory(dir / "x/data"));
    EXPECT_EQ(MacSandbox::getSharedPath(SharedPath::Config, "x"), dir / "x/config");
    EXPECT_EQ(MacSandbox::getSharedPath(SharedPath::Temp, "file"), dir / "file/temp") << "cannot be created";
    fakePlatform().groupContainers.clear();
    EXPECT_EQ(MacSandbox::getSharedPath("x"), dir / "x") << "the first answer stays";
}

TEST(MacSandbox, PermissionMeansExactlyTheFolderAskedFor)
{
    fakePlatform().panelAnswer = Lines{"/x/b"};
    EXPECT_TRUE(MacSandbox::requestPermission("/x/a/../b/", ""));
    EXPECT_EQ(fakePlatform().openPanels[0].startFolder + fakePlatform().openPanels[0].prompt, "/x/b授予访问权限");
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
    // The time, how many looks find it running; the result, and how often it looked.
    for (const auto &[timeout, running, result, looks] : {std::tuple(500, 100, -1, 4), {400, 4, 0, 5}, {0, 0, 0, 1}}) {
        fakePlatform().looks = 0;
        fakePlatform().looksWhileRunning = running;
        EXPECT_EQ(MacSandbox::waitProcFinish(7, timeout), result) << timeout;
        EXPECT_EQ(fakePlatform().looks, looks) << timeout;
    }
}

TEST(MacBookmark, DocumentBringsItsFolderAlong)
{
    const test::TempDir dir;
    const std::string folder = dir.path().string();
    test::writeFile(dir / "a.pdf", "");
    fakePlatform().pathsWithoutBookmark = {folder};
    EXPECT_TRUE(MacBookmark::createBookmark(dir / "a.pdf")) << "whatever became of the folder";
    fakePlatform().pathsWithoutBookmark.clear();
    EXPECT_TRUE(MacBookmark::createBookmark(dir / "a.pdf"));
    for (const std::string &path : {folder, dir / "a.pdf"})
        EXPECT_TRUE(MacBookmark::hasBookmark(path)) << path;
    EXPECT_TRUE(MacBookmark::createBookmark(folder + "/"));
    EXPECT_EQ(fakePlatform().synchronisations, 2) << "an entry is never renewed";

    fakePlatform().keepsUserDefaults = false;
    for (const std::string &path : {std::string(), dir / "nothing", std::string("/\0x", 3), std::string("/")})
        EXPECT_FALSE(MacBookmark::createBookmark(path)) << path;
    EXPECT_EQ(fakePlatform().systemLog,
              (Lines{"Error creating bookmark: no bookmark, " + folder,
                     "Error creating bookmark: the entry cannot be stored, /"}));
}

TEST(MacBookmark, OpensOnlyWhatResolvesFreshAndMayBeAccessed)
{
    store("/a", "2048:/a");
    store("/bad", "bad");
    EXPECT_FALSE(MacBookmark::openBookmark("/none/"));
    EXPECT_FALSE(MacBookmark::closeBookmark("/bad"));
    fakePlatform().staleBookmarks = true;
    EXPECT_FALSE(MacBookmark::openBookmark("/a"));
    EXPECT_TRUE(MacBookmark::closeBookmark("/a")) << "a stale bookmark resolves";
    fakePlatform().staleBookmarks = false;
    fakePlatform().deniesAccess = true;
    EXPECT_FALSE(MacBookmark::openBookmark("/a"));
    fakePlatform().deniesAccess = false;
    EXPECT_TRUE(MacBookmark::openBookmark("/a"));
    EXPECT_TRUE(MacBookmark::deleteBookmark("/a"));
    EXPECT_TRUE(MacBookmark::hasBookmark("/a")) << "deleting keeps the entry, on purpose";
    const std::string start = "start 1024 of 2048:/a", stop = "stop 1024 of 2048:/a";
    EXPECT_EQ(fakePlatform().accesses, (Lines{stop, start, start, stop}));
    EXPECT_EQ(
        fakePlatform().systemLog,
        (Lines{"No bookmark data found for key: vant_pdf_/none", "Error resolving bookmark data: no bookmark data",
               "Bookmark data is stale.", "Failed to start accessing security scoped resource."}));
}

TEST(MacBookmark, SearchesTheFoldersAbove)
{
    for (const std::string path : {"", "/", "/a", "/a/b"})
        store(path, "2048:" + path);
    const std::tuple<const char *, bool, Lines> rows[] = {
        {"", true, {}},        {"a/b", true, {}},           {"/../z", true, {}},
        {"/a/b/c", false, {}}, {"/a/b/c/", true, {"/a/b"}}, {"//a/b/../x/./y", true, {"/a"}},
    };
    for (const auto &[dir, searchParents, opened] : rows) {
        fakePlatform().accesses.clear();
        EXPECT_EQ(MacBookmark::checkBookmarkForDir(dir, searchParents), !opened.empty()) << dir;
        EXPECT_EQ(fakePlatform().accesses, opened.empty() ? Lines{} : Lines{"start 1024 of 2048:" + opened[0]}) << dir;
    }
}

TEST(MacBookmark, SharesPlainBookmarksAsJson)
{
    fakePlatform().pathsWithoutBookmark = {"/none"};
    EXPECT_EQ(MacBookmark::createSharedBookmarkJson({"/", "/none", "\xff"}), "[[48,58,47],[],[48,58,255]]");
    EXPECT_EQ(MacBookmark::createSharedBookmarkJson({}), "[]");
    EXPECT_TRUE(MacBookmark::parseSharedBookmarkJson(" [ [48,58,47], [], [-0,255] ] "));
    EXPECT_EQ(fakePlatform().systemLog,
              (Lines{"Error creating bookmark: no bookmark, /none", "MacBookmark::openBookmark succeed",
                     "MacBookmark::openBookmark succeed okokok", "MacBookmark::openBookmark nullptr",
                     "MacBookmark::openBookmark succeed", "Failed to start accessing security scoped resource 288."}));

    fakePlatform().systemLog.clear();
    Lines bad{"", "{\"a\":[[1]]}", "[[1]]]", "[[1]" + std::string(4 << 20, ' ') + "]", std::string("[]\0x", 4)};
    for (const char *element : {"1", "[256]", "[-1]", "[1.0]", "[99999999999999999999]", "[\"1\"]", "[[1]]"})
        bad.push_back(std::string("[[48,58,47],") + element + "]");
    for (const std::string &text : bad)
        EXPECT_FALSE(MacBookmark::parseSharedBookmarkJson(text)) << text.substr(0, 40);
    EXPECT_EQ(fakePlatform().systemLog, Lines{}) << "nothing is opened";
    EXPECT_TRUE(MacBookmark::openSharedBookmark({0})) << "whether it resolves or not";
}
