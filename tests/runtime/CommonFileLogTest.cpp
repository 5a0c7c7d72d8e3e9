#include "runtime/CommonFileLog.h"

#include "config/MacConfigPath.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <regex>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

using test::FakeBundle;

TEST(CommonFileLog, OffWithoutFileAndSwitch)
{
    const FakeBundle bundle;
    const std::string data = bundle.makeUserDataDir();
    CommonFileLog::WriteLog("lost");
    EXPECT_FALSE(CommonFileLog::IsLogEnable());
    EXPECT_TRUE(fs::is_empty(data));
}

TEST(CommonFileLog, PresenceOfTheFileSwitchesOnAndOffAtOnce)
{
    const FakeBundle bundle;
    const std::string log = bundle.makeUserDataDir() + "foo.log";
    CommonFileLog::WriteLog("lost");
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
}

TEST(CommonFileLog, ForkedChildWritesItsOwnProcessId)
{
    const FakeBundle bundle;
    const std::string log = bundle.makeUserDataDir() + "foo.log";
    test::writeFile(log, "");
    CommonFileLog::WriteLog("parent");
    const pid_t child = ::fork();
    if (child == 0) {
        CommonFileLog::WriteLog("child");
        ::_exit(0);
    }
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    const std::regex expected(" \\[pid:" + std::to_string(child) + " tid:0x[0-9a-f]+\\]  child\n");
    EXPECT_TRUE(std::regex_search(test::readFile(log), expected)) << test::readFile(log);
}

TEST(CommonFileLog, SwitchedOnItCreatesTheFileButNotItsFolder)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=1\n");
    CommonFileLog::WriteLog("lost");
    EXPECT_FALSE(fs::exists(bundle / "support"));

    const std::string log = bundle.makeUserDataDir() + "foo.log";
    CommonFileLog::WriteLog("first");
    EXPECT_NE(test::readFile(log).find("]  first\n"), std::string::npos);
}

TEST(CommonFileLog, WhatIsNoFileIsNeitherWaitedForNorFatal)
{
    const FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=1\n");
    const std::string log = bundle.makeUserDataDir() + "foo.log";

    fs::create_directory(log);
    CommonFileLog::WriteLog("into a folder");
    EXPECT_TRUE(fs::is_empty(log));
    fs::remove(log);

    ASSERT_EQ(::mkfifo(log.c_str(), 0600), 0);
    CommonFileLog::WriteLog("nobody reads");

    const int reader = ::open(log.c_str(), O_RDONLY | O_NONBLOCK);
    const std::string longMessage(1 << 20, 'x');
    CommonFileLog::WriteLog(longMessage);
    CommonFileLog::WriteLog("the pipe is full");
    char first = 0;
    EXPECT_EQ(::read(reader, &first, 1), 1) << "a reader gets what fits";
    ::close(reader);
    fs::remove(log);

    fs::create_symlink("/dev/full", log);
    CommonFileLog::WriteLog("no room");
    fs::remove(log);
    fs::create_symlink(log, log);
    CommonFileLog::WriteLog("a link to itself");
}

TEST(CommonFileLog, UndecidableExistenceIsReported)
{
    const FakeBundle bundle;
    const std::string log = bundle.makeUserDataDir() + "foo.log";
    fs::create_symlink(log, log);
    CommonFileLog::WriteLog("lost");
    EXPECT_THROW(static_cast<void>(CommonFileLog::IsLogEnable()), fs::filesystem_error);
}

TEST(CommonFileLog, ConvertsEveryCodePointLength)
{
    EXPECT_EQ(CommonFileLog::wstringToString(L"a\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff"),
              "a\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf\xf0\x90\x80\x80\xf4\x8f\xbf\xbf");
    EXPECT_EQ(CommonFileLog::wstringToString(std::wstring(2, L'\0')), std::string(2, '\0'));
}

TEST(CommonFileLog, ConvertsTextsOfEveryLength)
{
    const std::wstring pattern = L"plain ASCII, Größe, Документ, 文件名, \U0001F4C4\U0001F600; ";
    std::wstring text;
    for (int length = 0; length < 1100; ++length) {
        ASSERT_EQ(CommonFileLog::wstringToString(text), QString::fromStdWString(text).toStdString()) << length;
        text += pattern[text.size() % pattern.size()];
    }
}

TEST(CommonFileLog, RefusesWhatIsNoCodePoint)
{
    const FakeBundle bundle;
    for (const wchar_t bad : {wchar_t(0xD800), wchar_t(0xDFFF), wchar_t(0x110000), wchar_t(-1)}) {
        try {
            CommonFileLog::WriteLog(std::wstring(L"text") + bad);
            FAIL() << "took " << std::hex << static_cast<unsigned>(bad);
        } catch (const std::range_error &error) {
            EXPECT_STREQ(error.what(), "wstring_convert: to_bytes error");
        }
    }
}
