// What tests/faults/run drives: writes and reads every store, is killed while it writes, and runs out of memory. Lies
// in a bundle beside the product's own programs, so that the library answers as it does to them.

#include "config/ConfigFileUtil.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "config/MacReg.h"
#include "config/PdfReaderProductInfo.h"
#include "paths/MacBookmark.h"
#include "runtime/CCmdLineParser.h"
#include "runtime/CommonFileLog.h"
#include "runtime/MacGlobalUrl.h"
#include "runtime/OndEasyMd5.h"
#include "runtime/TaskMgr.h"
#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"

#include <QSettings>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <random>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// Memory that runs out on this thread, and what is held of it.

namespace {

thread_local long allowed = -1; // allocations until one fails; -1: none does
std::atomic<long> held{0};

bool fails()
{
    return allowed >= 0 && allowed-- == 0;
}

void *counted(void *memory)
{
    held += memory ? 1 : 0;
    return memory;
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library has names of its own
extern "C" {
void *__libc_malloc(size_t); // NOLINT: the C library's names for what is replaced here
void *__libc_calloc(size_t, size_t); // NOLINT
void *__libc_realloc(void *, size_t); // NOLINT
void __libc_free(void *); // NOLINT

void *malloc(size_t size)
{
    if (!fails())
        return counted(__libc_malloc(size));
    errno = ENOMEM;
    return nullptr;
}

void *calloc(size_t count, size_t size)
{
    if (!fails())
        return counted(__libc_calloc(count, size));
    errno = ENOMEM;
    return nullptr;
}

void *realloc(void *memory, size_t size)
{
    if (!fails())
        return memory ? __libc_realloc(memory, size) : counted(__libc_realloc(memory, size));
    errno = ENOMEM;
    return nullptr;
}

void free(void *memory)
{
    held -= memory ? 1 : 0;
    __libc_free(memory);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kLost = -2; // what was stored beside the value is gone
constexpr long kLongest = 10; // seconds for a next writer: the promised five, and as many for a busy machine

/// A value that survives the process. Each is written with numbers that grow.
struct Store
{
    std::function<void(int)> write;
    std::function<int()> read;
};

int ifKept(int value, int beside)
{
    return beside == 7 ? value : kLost;
}

std::string logPath()
{
    return MacConfigPath::GetInstance()->GetLogPath();
}

/// The number at the end of the log's last whole line.
int lastLogged()
{
    std::ifstream file(logPath());
    int last = 0;
    for (std::string line; std::getline(file, line) && !file.eof();) {
        if (const auto at = line.find("]  value "); at != std::string::npos)
            last = std::stoi(line.substr(at + 9));
    }
    return last;
}

/// The largest number that an entry is for.
int lastBookmarked()
{
    int last = -1;
    for (const MacBookmark::Entry &entry : MacBookmark::entries())
        last = std::max(last, std::atoi(entry.path.c_str() + entry.path.rfind('/') + 1));
    return last;
}

QString serverFile()
{
    return QString::fromStdString(MacConfigPath::GetInstance()->GetAppConfigPath("ressrc/chs/upnest.svr"));
}

/// -1 when nobody is logged in.
int numberOfNickname()
{
    vip_sdk::VipSdkCoreInterfaceImpl sdk;
    wchar_t *json = nullptr;
    const std::wstring text = sdk.GetUserInfoJson(&json) ? json : L"";
    sdk.FreeString(json);
    const std::wstring before = LR"("nickname":"n)";
    const auto at = text.find(before);
    return at == std::wstring::npos ? -1 : std::stoi(text.substr(at + before.size()));
}

const std::map<std::string, Store> &stores()
{
    static const auto &all = *new std::map<std::string, Store>{
        {"config",
         {[](int n) { ConfigFileUtil::SetLocalAppCfgValueInt("s/k", n); },
          [] {
              return ifKept(ConfigFileUtil::GetLocalAppCfgValueInt("s/k", -1),
                            ConfigFileUtil::GetLocalAppCfgValueInt("s/keep", -1));
          }}},
        {"count",
         {[](int n) {
              ConfigFileUtil::SetLocalAppCfgForCountValueInt({"s/k", "s/l"}, {n, n}, 2);
          },
          [] {
              std::vector<QString> keys{"s/k", "s/l", "s/keep"};
              std::vector<int> values(3);
              ConfigFileUtil::GetLocalAppCfgForCountValueInt(keys, values, 3, -1);
              return values[0] == values[1] ? ifKept(values[0], values[2]) : kLost;
          }}},
        {"overlay",
         {[](int n) { ConfigFileUtil::SetCfgdataFileValueIntUser("s/k", n); },
          [] {
              return ifKept(ConfigFileUtil::GetCfgdataFileValueIntUser("s/k", -1),
                            ConfigFileUtil::GetCfgdataFileValueIntUser("s/keep", -1));
          }}},
        {"registry",
         {[](int n) {
              MacReg key;
              key.open("faults", false);
              key.setValue("s/k", n);
          },
          [] {
              MacReg key;
              key.open("faults", true);
              return ifKept(key.value("s/k", -1).toInt(), key.value("s/keep", -1).toInt());
          }}},
        {"server",
         {[](int n) { PdfReaderProductInfo::GetInstance()->SetTryNo(n); },
          [] { return QSettings(serverFile(), QSettings::IniFormat).value("Common/TryNo", -1).toInt(); }}},
        {"bookmarks",
         {[](int n) {
              const std::string folder = MacConfigPath::GetInstance()->GetUserDataDir() + std::to_string(n);
              ::mkdir(folder.c_str(), S_IRWXU);
              MacBookmark::createBookmark(folder);
          },
          lastBookmarked}},
        {"sdk",
         {[](int n) {
              vip_sdk::VipSdkCoreInterfaceImpl sdk;
              if (n % 7 == 0)
                  sdk.Logout();
              sdk.SetUserInfo(L"id", L"token", (L"n" + std::to_wstring(n)).c_str(), L"");
          },
          numberOfNickname}},
        {"log", {[](int n) { CommonFileLog::WriteLog("value " + std::to_string(n)); }, lastLogged}},
    };
    return all;
}

/// Runs `work` in a process of its own; its exit status, or 128 and the signal that ended it.
int inChild(const std::function<int()> &work)
{
    std::cout.flush();
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(20);
        ::_exit(work());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// What a writer that is killed leaves to those who look.
struct Progress
{
    std::atomic<int> begun, done;
    std::atomic<long> longest; // milliseconds that a next writer took
};

Progress *sharedProgress(int writers)
{
    void *memory = ::mmap(nullptr, sizeof(Progress) * static_cast<std::size_t>(writers), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return static_cast<Progress *>(memory);
}

void killSoon(const std::function<void()> &work, int longestLife)
{
    static std::mt19937 random(std::random_device{}());
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    ::usleep(random() % static_cast<unsigned int>(longestLife));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

/// Kills writers of a store; what fell short.
int killWriters(const std::string &name, int rounds)
{
    const Store &store = stores().at(name);
    const bool logsOut = name == "sdk";
    Progress *const progress = sharedProgress(1);
    inChild([&] { return progress->done = store.read(), 0; });
    int fellShort = 0;
    for (int round = 0; round < rounds; ++round) {
        progress->begun = progress->done.load();
        killSoon(
            [&] {
                for (;;) {
                    store.write(++progress->begun);
                    progress->done = progress->begun.load();
                }
            },
            20'000);
        const int status = inChild([&] {
            const int found = store.read();
            if (found != progress->done && found != progress->begun && !(logsOut && found == -1))
                return 1;
            const auto start = Clock::now();
            progress->done = progress->begun + 1;
            store.write(progress->done);
            const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
            progress->longest = std::max<long>(progress->longest, time);
            return time > kLongest * 1000L ? 2 : store.read() == progress->done ? 0 : 3;
        });
        static const std::map<int, const char *> meaning = {
            {1, "neither old nor new"}, {2, "the next writer waited"}, {3, "the next writer was refused"}};
        if (status != 0 && ++fellShort < 10)
            std::cout << "round " << round << ": " << (meaning.count(status) ? meaning.at(status) : "crash") << ' '
                      << status << '\n';
        if (status != 0)
            inChild([&] { return progress->done = store.read(), 0; });
    }
    std::cout << "longest next write: " << progress->longest << " ms\n";
    return fellShort;
}

/// Lines "w<writer> <number> <length> xxx".
void writeLines(int writer, int count, int least, int most, Progress &progress)
{
    std::minstd_rand random(static_cast<unsigned int>(writer) + 1);
    for (int number = 1; number <= count; ++number) {
        const std::string head = "w" + std::to_string(writer) + ' ' + std::to_string(number) + ' ';
        const auto length = static_cast<std::size_t>(least) + random() % static_cast<unsigned int>(most - least + 1);
        progress.begun = number;
        CommonFileLog::WriteLog(head + std::to_string(length) + ' ' + std::string(length, 'x'));
        progress.done = number;
    }
}

/// Reads all lines of `writers`; what fell short. A writer that was killed may leave a piece of its own last line.
int checkLines(const Progress *progress, int writers, bool killed)
{
    std::vector<int> seen(static_cast<std::size_t>(writers));
    std::ifstream file(logPath());
    int fellShort = 0;
    int pieces = 0;
    for (std::string line; std::getline(file, line);) {
        const auto at = line.find("]  w");
        int writer = -1, number = 0, length = -1, taken = 0;
        if (at != std::string::npos)
            static_cast<void>(std::sscanf(line.c_str() + at, "]  w%d %d %d %n", &writer, &number, &length, &taken));
        const bool isWhole = at < 80 && line.compare(0, 2, "20") == 0 && writer >= 0 && writer < writers && taken > 0
            && line.size() == at + static_cast<std::size_t>(taken + length)
            && line.find_first_not_of('x', at + static_cast<std::size_t>(taken)) == std::string::npos;
        if (isWhole && number == ++seen[static_cast<std::size_t>(writer)])
            continue;
        const bool isLast = writer < 0 || writer >= writers || number > progress[writer].done;
        if (killed && !isWhole && isLast)
            ++pieces;
        else if (++fellShort < 10)
            std::cout << (isWhole ? "out of order: " : "torn: ") << line.substr(0, 120) << '\n';
    }
    for (int writer = 0; writer < writers; ++writer) {
        const int count = seen[static_cast<std::size_t>(writer)];
        if (count < progress[writer].done && ++fellShort < 10)
            std::cout << "missing: " << progress[writer].done - count << " of writer " << writer << '\n';
    }
    if (pieces > writers)
        std::cout << "torn: " << pieces << " lines of " << writers << " writers\n";
    return fellShort + std::max(0, pieces - writers);
}

int writeTogether(int writers, int count, int least, int most)
{
    Progress *const progress = sharedProgress(writers);
    for (int writer = 0; writer < writers; ++writer) {
        if (::fork() == 0) {
            writeLines(writer, count, least, most, progress[writer]);
            ::_exit(0);
        }
    }
    while (::wait(nullptr) > 0) { }
    return checkLines(progress, writers, false);
}

int killLoggers(int rounds)
{
    Progress *const progress = sharedProgress(rounds);
    for (int writer = 0; writer < rounds; ++writer)
        killSoon([&] { writeLines(writer, 1'000'000, 1, 100'000, progress[writer]); }, 10'000);
    return checkLines(progress, rounds, true);
}

struct Task : ITask
{
    explicit Task(std::atomic<int> &count) : runs(count) { }
    void run() override { ++runs; }
    std::atomic<int> &runs;
};

/// What runs out of memory, and its answer: the same each time, or std::bad_alloc.
const std::map<std::string, std::function<std::string()>> &operations()
{
    static const auto &all = *new std::map<std::string, std::function<std::string()>>{
        {"log",
         [] {
             CommonFileLog::WriteLog("value 1");
             CommonFileLog::WriteLog(L"wide \u00fc");
             return std::string();
         }},
        {"command-line",
         [] {
             const CCmdLineParser line(LR"(-open:"a b.pdf" /page=3 --name -long:0123456789012345678901234567890123)");
             return (line.GetVal(L"open") + line.GetVal(L"PAGE")).toStdString() + std::to_string(line.HasKey(L"-name"));
         }},
        {"digest",
         [] {
             const std::string path = MacConfigPath::GetInstance()->GetAppConfigPath("data/help.pdf");
             return OndEasyMd5(QString::fromStdString(path).toStdWString().c_str()).ToString().toStdString();
         }},
        {"worker-tasks",
         [] {
             std::atomic<int> runs{0};
             {
                 TaskMgr manager;
                 struct AtEnd
                 {
                     ~AtEnd() { manager.WaitTaskFinish(1000); }
                     TaskMgr &manager;
                 } atEnd{manager};
                 for (int i = 0; i < 20; ++i)
                     manager.PushTask(std::make_shared<Task>(runs));
             }
             return std::string();
         }},
        {"addresses",
         [] {
             bool isTest = false;
             return MacGlobalUrl::GetDefSvrHost(&isTest) + MacGlobalUrl::GetOfficialOcrInfoSvrUrl()
                 + MacGlobalUrl::GetVipSvrHost() + MacGlobalUrl::GetHelpHtmlUrlA();
         }},
        {"stores",
         [] {
             std::string answer;
             for (const auto &[name, store] : stores())
                 answer += name == "log" || name == "sdk" ? "" : std::to_string(store.read()) + ' ';
             return answer;
         }},
    };
    return all;
}

/// Fails each allocation in turn, in a process that has or has not done the operation before; what fell short.
int exhaust(const std::string &name, int step)
{
    const auto &operation = operations().at(name);
    auto *const expected =
        static_cast<char *>(::mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    inChild([&] { return operation().copy(expected, 4095), 0; });
    int fellShort = 0;
    int runs = 0;
    for (const bool isWarm : {false, true}) {
        int status = 0;
        for (int k = 0; status != 9 && fellShort < 10; k += step, ++runs) {
            status = inChild([&] {
                MacGlobalConfig::isInternationalApp(); // asked once, and the default if that fails
                long before = 0, clean = 0;
                for (int i = 0; isWarm && i < 3; ++i) {
                    before = held;
                    operation();
                    clean = held - before;
                }
                before = held;
                bool isRight = true;
                try {
                    allowed = k;
                    const std::string answer = operation();
                    isRight = answer == expected || (answer.empty() && name == "digest");
                } catch (const std::bad_alloc &) {
                } catch (const std::system_error &) { // no thread, or no path of the executable
                }
                const bool isDone = allowed >= 0;
                allowed = -1;
                const bool leaks = isWarm && held - before > std::max(0L, clean);
                const bool recovers = operation() == expected;
                return isDone ? 9 : !isRight ? 1 : leaks ? 2 : recovers ? 0 : 3;
            });
            static const std::map<int, const char *> meaning = {
                {1, "another answer"}, {2, "memory is lost"}, {3, "another answer afterwards"}};
            if (status != 0 && status != 9 && ++fellShort < 10)
                std::cout << name << (isWarm ? " again" : "") << ", allocation " << k << ": "
                          << (meaning.count(status) ? meaning.at(status) : "crash") << ' ' << status << '\n';
        }
    }
    std::cout << "runs: " << runs << '\n';
    return fellShort;
}

int run(const std::vector<std::string> &words)
{
    const auto number = [&](std::size_t at) { return std::stoi(words.at(at)); };
    const std::string command = words.at(0);
    ::getppid(); // where the operation begins, for who traces it
    if (command == "state") {
        for (const auto &[name, store] : stores())
            std::cout << name << ' ' << store.read() << '\n';
        return 0;
    }
    if (command == "write")
        return stores().at(words.at(1)).write(number(2)), 0;
    if (command == "answer")
        return std::cout << operations().at(words.at(1))() << '\n', 0;
    if (command == "wait") // until something comes, which may be another executable in this one's place
        return std::cin.get(), std::cout << operations().at(words.at(1))() << '\n', 0;
    int fellShort = 0;
    if (command == "kill")
        fellShort = killWriters(words.at(1), number(2));
    else if (command == "kill-log")
        fellShort = killLoggers(number(1));
    else if (command == "log")
        fellShort = writeTogether(number(1), number(2), number(3), number(4));
    else if (command == "exhaust")
        fellShort = exhaust(words.at(1), number(2));
    std::cout << "fell short: " << fellShort << '\n';
    return fellShort == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception &error) {
        std::cout << "exception: " << error.what() << '\n';
        return 3;
    }
}
