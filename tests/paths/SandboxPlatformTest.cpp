#include "paths/MacBookmark.h"
#include "paths/platform/UserDefaults.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

// Bookmarks on the platform that the library ships with.

namespace fs = std::filesystem;

namespace {

using Bytes = std::vector<unsigned char>;

/// A user with nothing but a folder in an empty home.
class SandboxPlatform : public testing::Test
{
protected:
    SandboxPlatform()
    {
        for (const char *name : {"HOME", "XDG_DATA_HOME"})
            ::setenv(name, (m_home / "user").c_str(), 1);
        fs::create_directory(folder());
    }

    [[nodiscard]] std::string folder() const { return m_home / "Ünï=\"1\"\n%"; }
    [[nodiscard]] std::string store() const { return m_home / "user/sandbox_platform_tests/user-defaults.ini"; }

    test::TempDir m_home;
};

/// Whether another process opens the bookmark.
bool opensElsewhere(const std::string &path)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(MacBookmark::openBookmark(path) ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    return status == 0;
}

} // namespace

TEST_F(SandboxPlatform, AnotherProcessFindsTheBookmarkUntilTheFolderIsAnotherOne)
{
    EXPECT_FALSE(MacBookmark::hasBookmark(folder()) || fs::exists(m_home / "user")) << "looking creates nothing";
    ASSERT_TRUE(MacBookmark::createBookmark(folder() + "/"));
    EXPECT_TRUE(opensElsewhere(folder()));

    fs::rename(folder(), m_home / "moved");
    EXPECT_FALSE(MacBookmark::closeBookmark(folder())) << "gone";
    fs::create_directory(folder());
    EXPECT_FALSE(opensElsewhere(folder())) << "stale";
    EXPECT_TRUE(MacBookmark::closeBookmark(folder())) << "a stale bookmark resolves";
    fs::remove(folder());
    fs::rename(m_home / "moved", folder());
    EXPECT_TRUE(opensElsewhere(folder())) << "back again";
}

TEST_F(SandboxPlatform, OnlyWholeDataOfThisVersionResolves)
{
    const Bytes good = MacBookmark::createSharedBookmark(folder());
    ASSERT_FALSE(good.empty());
    std::vector<Bytes> bad{
        good, good, Bytes(200, 0xff), {}, {good.begin(), good.end() - 1}, {good.begin(), good.begin() + 7}};
    ++bad[0][7]; // the version
    bad[1].push_back('x');
    for (const Bytes &data : bad) {
        platform::setUserDefaultsData("vant_pdf_/x", data);
        EXPECT_FALSE(MacBookmark::closeBookmark("/x")) << testing::PrintToString(data);
    }
    platform::setUserDefaultsData("vant_pdf_/x", good);
    EXPECT_TRUE(MacBookmark::closeBookmark("/x"));
}

TEST_F(SandboxPlatform, ProcessesThatWriteAtOnceLoseNothing)
{
    for (int process = 0; process < 4; ++process) {
        if (::fork() != 0)
            continue;
        for (int i = process; i < 400; i += 4)
            platform::setUserDefaultsData(std::to_string(i), Bytes(i, 'x'));
        ::_exit(0);
    }
    while (::wait(nullptr) > 0) { }
    for (int i = 0; i < 400; ++i)
        EXPECT_EQ(platform::userDefaultsData(std::to_string(i)), Bytes(i, 'x')) << i;
}

TEST_F(SandboxPlatform, DamagedStoreKeepsWhatIsWhole)
{
    const Bytes data{0, 255, '\n', '"'};
    platform::setUserDefaultsData("a/b=c", data);
    const std::string good = test::readFile(store());
    for (const std::string &damage : {std::string("cut off=\"AAA"), std::string("a/b%3Dc=\"AAA"),
                                      std::string("a/b%3Dc=\"!!\""), std::string("\0\xff\n", 3)}) {
        test::writeFile(store(), good + damage);
        platform::setUserDefaultsData("new", {});
        EXPECT_EQ(platform::userDefaultsData("a/b=c"), data) << damage;
        EXPECT_EQ(platform::userDefaultsData("new"), Bytes()) << damage;
    }
    fs::remove(store());
    ::mkfifo(store().c_str(), 0600);
    EXPECT_FALSE(MacBookmark::createBookmark(folder())) << "a FIFO is no store, nor waited for";
}
