#include "paths/RegularFile_p.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using State = FileContent::State;

TEST(RegularFile, IsReadWholeOrNotAtAll)
{
    const test::TempDir dir;
    test::writeFile(dir / "empty", "");
    test::writeFile(dir / "full", std::string(20000, 'x'));
    test::writeFile(dir / "over", std::string(20001, 'x'));
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    std::filesystem::create_symlink("fifo", dir / "link to fifo");

    const std::tuple<std::string, State, int> rows[] = {
        {dir / "empty", State::read, 0},        {dir / "full", State::read, 20000},
        {dir / "over", State::tooLarge, 0},     {dir / "none", State::missing, 0},
        {dir / "full/none", State::missing, 0}, {dir / std::string("full\0none", 9), State::missing, 0},
        {dir.path(), State::irregular, 0},      {dir / "link to fifo", State::irregular, 0},
    };
    for (const auto &[path, state, size] : rows) {
        const FileContent content = readRegularFile(path, 20000);
        EXPECT_EQ(content.state, state) << path;
        EXPECT_EQ(content.bytes.size(), size) << path;
    }
    // Where there is one its size is told as 0.
    EXPECT_NE(readRegularFile("/proc/self/status", 10).state, State::read);
}
