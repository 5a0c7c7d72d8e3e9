#include "paths/MacBookmark.h"

#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

using test::fakePlatform;

using Lines = std::vector<std::string>;

static void store(const std::string &path, const std::string &data)
{
    fakePlatform().userDefaults["vant_pdf_" + path] = {data.begin(), data.end()};
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
    EXPECT_TRUE(MacBookmark::parseSharedBookmarkJson(" [ [48,58,47], [], [-0] ] "));
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
}
