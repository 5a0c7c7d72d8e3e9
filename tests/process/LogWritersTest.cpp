#include "config/MacConfigPath.h"
#include "runtime/CommonFileLog.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <map>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A log that is on, in a folder of its own.
class LogOfThisProcess
{
public:
    LogOfThisProcess()
    {
        ::setenv("XDG_DATA_HOME", m_dir.path().c_str(), 1);
        test::writeFile(path(), "");
    }
    [[nodiscard]] std::string path() const { return MacConfigPath::GetInstance()->GetLogPath(); }

    /// What stands behind the writer's mark on every line, a torn line's remains before the mark left out.
    [[nodiscard]] std::vector<std::string> messages() const
    {
        std::vector<std::string> result;
        std::istringstream lines(test::readFile(path()));
        for (std::string line; std::getline(lines, line);) {
            const std::size_t mark = line.rfind("]  ");
            result.push_back(mark == std::string::npos ? "" : line.substr(mark + 3));
        }
        return result;
    }

private:
    test::TempDir m_dir;
};

/// A message whose end can be told from its beginning: "<number>:<length> xxxx".
std::string messageOf(int number)
{
    const std::string head = std::to_string(number) + ":";
    const std::size_t length = static_cast<std::size_t>(number) * 7919 % 20'000;
    return head + std::to_string(length) + " " + std::string(length, 'x');
}

bool isWhole(const std::string &message)
{
    return !message.empty() && message == messageOf(std::atoi(message.c_str()));
}

template <typename Work> pid_t inChild(Work work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

void writeFromThreads(int firstNumber, int threads, int lines)
{
    std::vector<std::thread> writers;
    for (int thread = 0; thread < threads; ++thread) {
        writers.emplace_back([first = firstNumber + thread * lines, lines] {
            for (int i = 0; i < lines; ++i)
                CommonFileLog::WriteLog(messageOf(first + i));
        });
    }
    for (std::thread &writer : writers)
        writer.join();
}

} // namespace

TEST(LogWriters, ManyProcessesAndThreadsLoseAndTearNothing)
{
    constexpr int processes = 8;
    constexpr int threads = 8;
    constexpr int lines = 500;
    const LogOfThisProcess log;
    for (int i = 0; i < processes; ++i)
        inChild([i] { writeFromThreads(i * threads * lines, threads, lines); });
    int status = 0;
    while (::wait(&status) > 0)
        EXPECT_EQ(status, 0);

    std::set<int> seen;
    for (const std::string &message : log.messages()) {
        ASSERT_TRUE(isWhole(message)) << message.substr(0, 40);
        seen.insert(std::atoi(message.c_str()));
    }
    EXPECT_EQ(seen.size(), static_cast<std::size_t>(processes * threads * lines));
}

TEST(LogWriters, KilledWriterTearsAtMostItsOwnLastLine)
{
    constexpr int rounds = 20;
    const LogOfThisProcess log;
    int killedInTime = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto sizeBefore = fs::file_size(log.path());
        const pid_t writer = inChild([] {
            for (int i = 0;; ++i)
                CommonFileLog::WriteLog(messageOf(i % 1000));
        });
        while (fs::file_size(log.path()) < sizeBefore + 100'000U + static_cast<unsigned>(round) * 4099U)
            std::this_thread::yield();
        ::kill(writer, SIGKILL);
        int status = 0;
        ::waitpid(writer, &status, 0);
        killedInTime += WIFSIGNALED(status) ? 1 : 0;
        CommonFileLog::WriteLog(messageOf(1000 + round));
    }
    EXPECT_EQ(killedInTime, rounds);

    int survivorsLines = 0;
    for (const std::string &message : log.messages()) {
        EXPECT_TRUE(isWhole(message)) << message.substr(0, 40);
        survivorsLines += std::atoi(message.c_str()) >= 1000 ? 1 : 0;
    }
    EXPECT_EQ(survivorsLines, rounds) << "the line after a torn one is still whole";
}
