#include "runtime/CommonFileLog.h"

#include "config/MacConfigPath.h"
#include "tests/support/Eventually.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/OwnProcess.h"

#include <QDateTime>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <numeric>
#include <regex>
#include <sys/resource.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

struct CommonFileLogTest : testing::Test
{
    const test::FakeBundle bundle;
    const std::string log = bundle.makeUserDataDir() + "foo.log";
};

/// A message whose end can be told from its beginning: "<number>:<length> xxxx". Each eighth may be long: all of them
/// would be more than a small file system for temporary files holds.
std::string messageOf(int number)
{
    const int length = static_cast<int>(number * 7919LL % (number % 8 == 0 ? 20'000 : 300));
    return std::to_string(number) + ":" + std::to_string(length) + " " + std::string(length, 'x');
}

/// The numbers of the messages in a log that stand on a line of their own and are whole, sorted.
std::vector<int> wholeMessages(const std::string &log)
{
    std::vector<int> numbers;
    std::ifstream file(log);
    for (std::string line; std::getline(file, line);) {
        const std::string message = line.substr(std::min(line.find("]  "), line.size() - 3) + 3);
        const int number = std::atoi(message.c_str());
        if (message == messageOf(number))
            numbers.push_back(number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

/// Writes a line when the process ends.
struct LastWord
{
    ~LastWord()
    {
        if (isOn)
            CommonFileLog::WriteLog("the last word");
    }
    bool isOn = false;
} g_lastWord; // made before, and so destroyed after, whatever a test makes

} // namespace

TEST_F(CommonFileLogTest, PresenceOfTheFileSwitchesOnAndOffAtOnce)
{
    EXPECT_FALSE(CommonFileLog::IsLogEnable());
    CommonFileLog::WriteLog("lost");
    EXPECT_FALSE(fs::exists(log));
    test::writeFile(log, "kept\n");
    EXPECT_TRUE(CommonFileLog::IsLogEnable());
    CommonFileLog::WriteLog(L"Grüße \U0001F600");
    CommonFileLog::WriteLog("");

    const std::string stamp =
        R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \[pid:)" + std::to_string(::getpid()) + R"( tid:0x[0-9a-f]+\]  )";
    EXPECT_TRUE(
        std::regex_match(test::readFile(log), std::regex("kept\n" + stamp + "Grüße \U0001F600\n" + stamp + "\n")))
        << test::readFile(log);

    fs::remove(log);
    CommonFileLog::WriteLog("lost again");
    EXPECT_FALSE(fs::exists(log));
    fs::create_symlink(log, log);
    CommonFileLog::WriteLog("lost too");
    EXPECT_THROW(static_cast<void>(CommonFileLog::IsLogEnable()), fs::filesystem_error) << "undecidable";
}

TEST_F(CommonFileLogTest, ForkedChildOfManyThreadsWaitsForNoneAndTellsItsOwnNumber)
{
    test::writeFile(log, "");
    ::setenv("TZ", "IST-5:30", 1);
    CommonFileLog::WriteLog("parent");
    std::atomic<bool> stop{false};
    std::thread other([&stop] {
        while (!stop)
            CommonFileLog::WriteLog("other");
    });
    pid_t child = 0;
    for (int i = 0; i < 200; ++i) {
        child = ::fork();
        if (child == 0) {
            CommonFileLog::WriteLog("child");
            ::_exit(0);
        }
        int status = -1;
        const bool ended = test::eventually([&] { return ::waitpid(child, &status, WNOHANG) == child; });
        EXPECT_TRUE(ended && status == 0) << i;
        if (!ended) {
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
            break;
        }
    }
    stop = true;
    other.join();
    const std::string content = test::readFile(log); // of any length
    const auto lastLine = [&content](const std::string &message) {
        const std::size_t at = content.rfind("]  " + message + "\n"), begin = content.rfind('\n', at) + 1;
        return content.substr(begin, at - begin);
    };
    const auto timeOf = [](const std::string &line) {
        return QDateTime::fromString(QString::fromStdString(line.substr(0, 19)), "yyyy-MM-dd hh:mm:ss");
    };
    const std::string line = lastLine("child");
    EXPECT_TRUE(std::regex_search(line, std::regex("pid:" + std::to_string(child) + " tid:0x[0-9a-f]+$"))) << line;
    EXPECT_LT(std::abs(timeOf(lastLine("parent")).secsTo(timeOf(line))), 3600) << "the time zone is the parent's";
}

TEST_F(CommonFileLogTest, ForkedChildKnowsTheTimeZoneOfAParentThatWroteNothing)
{
    ::setenv("TZ", "IST-5:30", 1);
    EXPECT_FALSE(CommonFileLog::IsLogEnable());
    CommonFileLog::WriteLog("parent");
    test::writeFile(log, "");
    const auto now = QDateTime::currentDateTime();
    EXPECT_TRUE(test::succeedsInOwnProcess([] { CommonFileLog::WriteLog("child"); }));
    const QString line = QString::fromStdString(test::readFile(log));
    EXPECT_LT(std::abs(QDateTime::fromString(line.left(19), "yyyy-MM-dd hh:mm:ss").secsTo(now)), 3600)
        << line.toStdString();
}

TEST_F(CommonFileLogTest, FirstLineMayComeFromAStaticDestructor)
{
    test::writeFile(log, "");
    EXPECT_TRUE(test::succeedsInOwnProcess([] {
        static_cast<void>(MacConfigPath::GetInstance());
        g_lastWord.isOn = true;
        std::exit(0); // NOLINT(concurrency-mt-unsafe)
    }));
    EXPECT_NE(test::readFile(log).find("]  the last word\n"), std::string::npos);
}

TEST_F(CommonFileLogTest, LineWrittenInPartSpoilsNoOther)
{
    test::writeFile(log, "");
    EXPECT_TRUE(test::succeedsInOwnProcess([this] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit full = {30, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
        CommonFileLog::WriteLog("no room");
        ::setrlimit(RLIMIT_FSIZE, &limit);
        CommonFileLog::WriteLog("next");
        CommonFileLog::WriteLog("last");
        EXPECT_TRUE(std::regex_match(test::readFile(log), std::regex(".{30}\n.*\\]  next\n.*\\]  last\n")))
            << test::readFile(log);
    }));
}

TEST_F(CommonFileLogTest, SwitchedOnItCreatesTheFileButNotItsFolder)
{
    fs::remove_all(bundle / "support");
    bundle.writeGlobalFile("[common]\nenable_log=1\n");
    CommonFileLog::WriteLog("lost");
    EXPECT_FALSE(fs::exists(bundle / "support"));

    static_cast<void>(bundle.makeUserDataDir());
    CommonFileLog::WriteLog("first");
    EXPECT_NE(test::readFile(log).find("]  first\n"), std::string::npos);
}

TEST_F(CommonFileLogTest, WhatIsNoFileIsNeitherWaitedForNorFatal)
{
    bundle.writeGlobalFile("[common]\nenable_log=1\n");
    fs::create_directory(log);
    CommonFileLog::WriteLog("into a folder");
    EXPECT_TRUE(fs::is_empty(log));
    fs::remove(log);

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
    fs::remove(log);
    fs::create_symlink(log, log);
    CommonFileLog::WriteLog("a link to itself");
}

TEST_F(CommonFileLogTest, ConvertsEveryCodePointAndRefusesWhatIsNone)
{
    EXPECT_EQ(CommonFileLog::wstringToString(L"a\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff"),
              "a\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf\xf0\x90\x80\x80\xf4\x8f\xbf\xbf");
    EXPECT_EQ(CommonFileLog::wstringToString(std::wstring(2, L'\0')), std::string(2, '\0'));

    const std::wstring pattern = L"plain ASCII, Größe, 文件名, \U0001F600; ";
    std::wstring text;
    for (int length = 0; length < 1100; ++length) {
        ASSERT_EQ(CommonFileLog::wstringToString(text), QString::fromStdWString(text).toStdString()) << length;
        text += pattern[text.size() % pattern.size()];
    }
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
    std::vector<int> all(32'000);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(wholeMessages(log), all);
}

TEST_F(CommonFileLogTest, KilledWriterTearsAtMostItsOwnLastLine)
{
    test::writeFile(log, "");
    const pid_t writer = ::fork();
    if (writer == 0)
        for (;;)
            CommonFileLog::WriteLog(messageOf(16));
    EXPECT_TRUE(test::eventually([&] { return fs::file_size(log) >= 100'000; }));
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    CommonFileLog::WriteLog(messageOf(24));
    EXPECT_EQ(wholeMessages(log).back(), 24) << "the line after a torn one is still whole";
}
