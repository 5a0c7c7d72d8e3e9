#include "runtime/CommonFileLog.h"

#include "tests/support/Concurrency.h"
#include "tests/support/FakePlatform.h"

#include <QDateTime>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <regex>
#include <set>
#include <sstream>
#include <sys/stat.h>

namespace fs = std::filesystem;

struct CommonFileLogTest : testing::Test
{
    const test::FakeBundle bundle;
    const std::string log = bundle.makeUserDataDir() + "foo.log";
};

/// A message of a length of its own. Each eighth may be long: all of them would be more than a small file system for
/// temporary files holds.
static std::string messageOf(int number)
{
    return std::to_string(number) + ":" + std::string(number * 7919LL % (number % 8 == 0 ? 20'000 : 300), 'x');
}

TEST_F(CommonFileLogTest, PresenceOfTheFileSwitchesOnAndOffAtOnce)
{
    ::close(STDIN_FILENO); // whose number the next file has
    EXPECT_FALSE(CommonFileLog::IsLogEnable());
    CommonFileLog::WriteLog("lost");
    EXPECT_FALSE(fs::exists(log));
    test::writeFile(log, "a line that was written in part");
    EXPECT_TRUE(CommonFileLog::IsLogEnable());
    CommonFileLog::WriteLog(L"Grüße \U0001F600");
    CommonFileLog::WriteLog("");

    const std::string stamp =
        R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \[pid:)" + std::to_string(::getpid()) + R"( tid:0x[0-9a-f]+\]  )";
    EXPECT_TRUE(
        std::regex_match(test::readFile(log),
                         std::regex("a line that was written in part\n" + stamp + "Grüße \U0001F600\n" + stamp + "\n")))
        << test::readFile(log);
    EXPECT_EQ(::open("/dev/null", O_RDONLY), STDIN_FILENO) << "a file stayed open";

    fs::remove(log);
    CommonFileLog::WriteLog("lost again");
    EXPECT_FALSE(fs::exists(log));
    fs::create_symlink(log, log);
    CommonFileLog::WriteLog("lost too");
    EXPECT_THROW(static_cast<void>(CommonFileLog::IsLogEnable()), fs::filesystem_error) << "undecidable";
}

TEST_F(CommonFileLogTest, ForkedChildOfManyThreadsWaitsForNoneAndTellsItsOwnNumberAndTheParentsTime)
{
    test::writeFile(log, "");
    ::setenv("TZ", "IST-5:30", 1);
    CommonFileLog::WriteLog("parent"); // a fork amid the very first line would wait for a thread that it lacks
    std::atomic<bool> stop{false};
    std::thread other([&stop] {
        while (!stop)
            CommonFileLog::WriteLog("other");
    });
    for (int i = 0; i < 200 && !HasFailure(); ++i)
        EXPECT_TRUE(test::succeedsInProcesses(1, [](int) {
            ::alarm(60); // ends one that waits for a lock which nobody will release
            CommonFileLog::WriteLog("child " + std::to_string(::getpid()));
        })) << i;
    stop = true;
    other.join();
    const std::string content = test::readFile(log); // of any length
    const std::size_t end = content.find('\n', content.rfind("child ")), begin = content.rfind('\n', end - 1) + 1;
    const std::string line = content.substr(begin, end - begin);
    EXPECT_TRUE(std::regex_search(line, std::regex(R"(\[pid:(\d+) tid:0x[0-9a-f]+\]  child \1$)"))) << line;
    const auto time = QDateTime::fromString(QString::fromStdString(line.substr(0, 19)), "yyyy-MM-dd hh:mm:ss");
    EXPECT_LT(std::abs(time.secsTo(QDateTime::currentDateTime())), 3600) << line;
}

TEST_F(CommonFileLogTest, SwitchedOnItCreatesTheFileAndNothingElse)
{
    fs::remove_all(bundle / "support");
    bundle.writeGlobalFile("[common]\nenable_log=1\n");
    CommonFileLog::WriteLog("lost");
    EXPECT_FALSE(fs::exists(bundle / "support")) << "its folder";
    fs::create_directories(log);
    CommonFileLog::WriteLog("into a folder");
    EXPECT_TRUE(fs::is_empty(log));
    fs::remove(log);
    CommonFileLog::WriteLog("first");
    EXPECT_EQ(test::logMessages(log), "first\n");
}

TEST_F(CommonFileLogTest, WhatTakesNoLineIsNeitherWaitedForNorFatal)
{
    ASSERT_EQ(::mkfifo(log.c_str(), 0600), 0);
    CommonFileLog::WriteLog("nobody reads");
    const int reader = ::open(log.c_str(), O_RDONLY | O_NONBLOCK);
    CommonFileLog::WriteLog(std::string(1 << 20, 'x'));
    CommonFileLog::WriteLog("the pipe is full");
    char first = 0;
    EXPECT_EQ(::read(reader, &first, 1), 1) << "a reader gets what fits";
    fs::remove(log);
    fs::create_symlink("/dev/full", log);
    CommonFileLog::WriteLog("no room");
}

TEST_F(CommonFileLogTest, ConvertsEveryCodePointAndRefusesWhatIsNone)
{
    EXPECT_EQ(CommonFileLog::wstringToString(L"a\u007f\u0080\u07ff\u0800\ue000\uffff\U00010000\U0010ffff"),
              "a\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xee\x80\x80\xef\xbf\xbf\xf0\x90\x80\x80\xf4\x8f\xbf\xbf");
    EXPECT_EQ(CommonFileLog::wstringToString(std::wstring(2, L'\0')), std::string(2, '\0'));
    for (const wchar_t bad : {wchar_t(0xD800), wchar_t(0xDFFF), wchar_t(0x110000), wchar_t(-1)})
        EXPECT_THROW(CommonFileLog::WriteLog(std::wstring(L"text") + bad), std::range_error) << std::hex << bad;
}

TEST_F(CommonFileLogTest, ManyProcessesAndThreadsLoseAndTearNothing)
{
    test::writeFile(log, "");
    EXPECT_TRUE(test::succeedsInProcesses(8, [](int process) {
        test::onThreads(8, [process](int thread) {
            for (int line = 0; line < 500; ++line)
                CommonFileLog::WriteLog(messageOf((process * 8 + thread) * 500 + line));
        });
    }));
    std::set<int> whole;
    std::istringstream lines(test::logMessages(log));
    for (std::string line; std::getline(lines, line);) {
        const int number = std::atoi(line.c_str());
        EXPECT_TRUE(line == messageOf(number)) << number;
        EXPECT_TRUE(whole.insert(number).second) << number;
    }
    EXPECT_EQ(whole.size(), 32'000U);
}
