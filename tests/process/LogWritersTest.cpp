#include "tests/process/LogMessage.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QProcess>
#include <fstream>
#include <map>
#include <memory>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr int kDeadline = 90'000;

/// The log of writer processes, switched on by its presence, in a folder of its own.
class WritersLog
{
public:
    WritersLog() { test::writeFile(path(), ""); }

    [[nodiscard]] std::string path() const { return m_dir / "log_writer.log"; }

    [[nodiscard]] std::unique_ptr<QProcess> startWriter(int first, int threads, int lines) const
    {
        auto writer = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", QString::fromStdString(m_dir.path().string()));
        writer->setProcessEnvironment(environment);
        writer->start(OND_TEST_LOG_WRITER, {QString::number(first), QString::number(threads), QString::number(lines)});
        EXPECT_TRUE(writer->waitForStarted());
        return writer;
    }

    /// How often each message stands in the log, all of them whole. A torn line is joined to the next and gives way to
    /// it.
    [[nodiscard]] std::map<int, int> wholeMessages() const
    {
        std::map<int, int> result;
        std::ifstream file(path());
        for (std::string line; std::getline(file, line);) {
            const std::size_t mark = line.rfind("]  ");
            const std::string message = mark == std::string::npos ? line : line.substr(mark + 3);
            const int number = test::numberOf(message);
            EXPECT_TRUE(message == test::messageOf(number)) << message.substr(0, 40);
            ++result[number];
        }
        return result;
    }

private:
    test::TempDir m_dir;
};

} // namespace

TEST(LogWriters, ManyProcessesAndThreadsLoseAndTearNothing)
{
    constexpr int processes = 8;
    constexpr int threads = 8;
    constexpr int lines = 500;
    const WritersLog log;
    std::vector<std::unique_ptr<QProcess>> writers;
    for (int i = 0; i < processes; ++i)
        writers.push_back(log.startWriter(i * threads * lines, threads, lines));
    for (const auto &writer : writers)
        EXPECT_TRUE(writer->waitForFinished(kDeadline) && writer->exitCode() == 0);

    const std::map<int, int> messages = log.wholeMessages();
    EXPECT_EQ(messages.size(), static_cast<std::size_t>(processes * threads * lines));
    for (const auto &[number, count] : messages)
        EXPECT_EQ(count, 1) << number;
}

TEST(LogWriters, KilledWriterTearsAtMostItsOwnLastLine)
{
    constexpr int rounds = 20;
    constexpr int endless = 1'000'000;
    const WritersLog log;
    for (int round = 0; round < rounds; ++round) {
        const auto sizeBefore = fs::file_size(log.path());
        const auto writer = log.startWriter(rounds, 1, endless);
        const QDeadlineTimer deadline(kDeadline);
        while (!deadline.hasExpired()
               && fs::file_size(log.path()) < sizeBefore + 100'000U + static_cast<std::uintmax_t>(round) * 4099U)
            std::this_thread::yield();
        writer->kill();
        EXPECT_TRUE(writer->waitForFinished(kDeadline) && writer->exitStatus() == QProcess::CrashExit);
        EXPECT_TRUE(log.startWriter(round, 1, 1)->waitForFinished(kDeadline));
    }

    const std::map<int, int> messages = log.wholeMessages();
    for (int round = 0; round < rounds; ++round)
        EXPECT_EQ(messages.count(round), 1U) << "the line after a torn one is still whole";
}
