// The diagnostic log against the system calls that it cannot do without, switched on by "mk.dat", switched on by the
// presence of its file, and off; and its conversion of wide texts against the standard library's.
//
// What a line costs depends on the file system: TMPDIR chooses another one.

#include "bench/support/Bundles.h"
#include "bench/support/Ratios.h"
#include "config/GlobalConfigFile.h"
#include "config/MacConfigPath.h"
#include "runtime/CommonFileLog.h"

#include <codecvt>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <locale>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::string kMessage(80, 'm');

std::string logPath()
{
    return MacConfigPath::GetInstance()->GetLogPath();
}

void writeGlobalFile(const char *content)
{
    std::ofstream(GetDatPath()) << content;
    std::filesystem::create_directories(MacConfigPath::GetInstance()->GetUserDataDir());
}

/// The log's file for one run.
class LogFile
{
public:
    LogFile() : m_path(logPath()) { empty(); }
    ~LogFile() { std::filesystem::remove(m_path); }
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    void empty() const { std::ofstream(m_path, std::ios::trunc); }
    [[nodiscard]] const std::string &path() const { return m_path; }
    [[nodiscard]] std::string content() const
    {
        std::ifstream file(m_path);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::string m_path;
};

/// Measures the writing of a line. The file is emptied now and then, unmeasured: what the system does about a hundred
/// megabytes of unsaved pages is no part of the figure.
template <typename WriteLine> void measureLines(benchmark::State &state, const LogFile &log, WriteLine writeLine)
{
    constexpr int batch = 1000;
    while (state.KeepRunningBatch(batch)) {
        for (int i = 0; i < batch; ++i)
            writeLine();
        state.PauseTiming();
        log.empty();
        state.ResumeTiming();
    }
}

void writeLog(benchmark::State &state)
{
    const LogFile log;
    measureLines(state, log, [] { CommonFileLog::WriteLog(kMessage); });
}

void writeReadyLine(benchmark::State &state)
{
    const LogFile log;
    CommonFileLog::WriteLog(kMessage);
    const std::string line = log.content();
    if (line.find(kMessage) == std::string::npos)
        state.SkipWithError("the log is off");
    measureLines(state, log, [&] {
        const int descriptor = ::open(log.path().c_str(), O_RDWR | O_APPEND);
        char last = '\n';
        const bool isWhole =
            ::lseek(descriptor, -1, SEEK_END) < 0 || (::read(descriptor, &last, 1) == 1 && last == '\n');
        if (!isWhole || ::write(descriptor, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
            state.SkipWithError("cannot write");
        ::close(descriptor);
    });
}

void writeLogWhileOff(benchmark::State &state)
{
    for (auto _ : state)
        CommonFileLog::WriteLog(kMessage);
    if (std::filesystem::exists(logPath()))
        state.SkipWithError("the log is on");
}

void statOfTheLog(benchmark::State &state)
{
    const std::string path = logPath();
    struct stat status
    {
    };
    for (auto _ : state)
        benchmark::DoNotOptimize(::stat(path.c_str(), &status));
}

std::wstring repeated(const std::wstring &pattern, std::size_t size)
{
    std::wstring text;
    while (text.size() < size)
        text += pattern;
    text.resize(size);
    return text;
}

void declareConversion(const std::string &name, const std::wstring &text)
{
    bench::compare({"wstringToString, " + name,
                    [text](benchmark::State &state) {
                        for (auto _ : state)
                            benchmark::DoNotOptimize(CommonFileLog::wstringToString(text));
                    }},
                   bench::atMost(0.6), {"wstring_convert, " + name, [text](benchmark::State &state) {
                                            std::wstring_convert<std::codecvt_utf8<wchar_t>> converter;
                                            for (auto _ : state)
                                                benchmark::DoNotOptimize(converter.to_bytes(text));
                                        }});
}

void declareSwitchedOn()
{
    writeGlobalFile("[common]\nenable_log=1\n");
    bench::compare({"WriteLog, on by mk.dat", writeLog}, bench::atMost(1.35),
                   {"open, look, write, close", writeReadyLine});
}

void declareOnByPresence()
{
    writeGlobalFile("");
    bench::compare({"WriteLog, on by presence", writeLog}, bench::atMost(1.35),
                   {"open, look, write, close", writeReadyLine});
}

void declareOff()
{
    writeGlobalFile("");
    bench::compare({"WriteLog, off", writeLogWhileOff}, bench::atMost(1.1), {"stat", statOfTheLog});

    const std::wstring ascii = L"MacConfigPath::GetUserDataPath -> settings.ini; ";
    const std::wstring mixed = L"Größe der Datei »文件名.pdf« beträgt 12 КБ \U0001F4C4; ";
    for (const std::size_t size : {50, 4096}) {
        const std::string characters = std::to_string(size) + " characters";
        declareConversion(characters + ", ASCII", repeated(ascii, size));
        declareConversion(characters + ", mixed", repeated(mixed, size));
    }
}

} // namespace

int main(int argc, char **argv)
{
    return bench::runInBundles(argc, argv,
                               {{"switch", declareSwitchedOn}, {"presence", declareOnByPresence}, {"off", declareOff}});
}
