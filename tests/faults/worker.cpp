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

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QSettings>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <functional>
#include <iostream>
#include <random>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// Memory that runs out on this thread, and what is held of it.

static thread_local long allowed = -1; // allocations until one fails; -1: none does
static std::atomic<long> held{0};

template <typename Allocate> static void *unlessItIsTheOne(Allocate allocate, int more = 1)
{
    const bool fails = allowed >= 0 && allowed-- == 0;
    void *memory = fails ? nullptr : allocate();
    held += memory ? more : 0;
    errno = fails ? ENOMEM : errno;
    return memory;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library has names of its own
extern "C" {
void *__libc_malloc(size_t); // NOLINT: the C library's names for what is replaced here
void *__libc_calloc(size_t, size_t); // NOLINT
void *__libc_realloc(void *, size_t); // NOLINT
void __libc_free(void *); // NOLINT

void *malloc(size_t size)
{
    return unlessItIsTheOne([=] { return __libc_malloc(size); });
}

void *calloc(size_t count, size_t size)
{
    return unlessItIsTheOne([=] { return __libc_calloc(count, size); });
}

void *realloc(void *memory, size_t size)
{
    return unlessItIsTheOne([=] { return __libc_realloc(memory, size); }, memory ? 0 : 1);
}

void free(void *memory)
{
    held -= memory ? 1 : 0;
    __libc_free(memory);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

constexpr int kLost = -2; // what was stored beside the value is gone

/// Stores of a value that survives the process. Each is written with numbers that grow.
constexpr const char *kStores[] = {"bookmarks", "config", "count", "log", "overlay", "registry", "sdk", "server"};

static void writeStore(const std::string &store, int n)
{
    if (store == "config") {
        ConfigFileUtil::SetLocalAppCfgValueInt("s/k", n);
    } else if (store == "count") {
        ConfigFileUtil::SetLocalAppCfgForCountValueInt({"s/k", "s/l"}, {n, n}, 2);
    } else if (store == "overlay") {
        ConfigFileUtil::SetCfgdataFileValueIntUser("s/k", n);
    } else if (store == "registry") {
        MacReg key;
        key.open("faults", false);
        key.setValue("s/k", n);
    } else if (store == "server") {
        PdfReaderProductInfo::GetInstance()->SetTryNo(n);
    } else if (store == "bookmarks") {
        const std::string folder = MacConfigPath::GetInstance()->GetUserDataDir() + std::to_string(n);
        ::mkdir(folder.c_str(), S_IRWXU);
        MacBookmark::createBookmark(folder);
    } else if (store == "sdk") {
        vip_sdk::VipSdkCoreInterfaceImpl sdk;
        if (n % 7 == 0)
            sdk.Logout();
        sdk.SetUserInfo(L"id", L"token", (L"n" + std::to_wstring(n)).c_str(), L"");
    } else {
        CommonFileLog::WriteLog("value " + std::to_string(n));
    }
}

/// What `stored` answers for the value, if what was stored beside it is still there.
template <typename Stored> static int ifKept(Stored stored)
{
    return stored("s/keep", -1) == 7 ? stored("s/k", -1) : kLost;
}

/// Of the log, the number of its last whole line; of bookmarks the largest; -1 when nothing is stored.
static int readStore(const std::string &store)
{
    if (store == "config")
        return ifKept(ConfigFileUtil::GetLocalAppCfgValueInt);
    if (store == "overlay")
        return ifKept(ConfigFileUtil::GetCfgdataFileValueIntUser);
    if (store == "count") {
        std::vector<QString> keys{"s/k", "s/l", "s/keep"};
        std::vector<int> values(3);
        ConfigFileUtil::GetLocalAppCfgForCountValueInt(keys, values, 3, -1);
        return values[0] == values[1] && values[2] == 7 ? values[0] : kLost;
    }
    if (store == "registry") {
        MacReg key;
        key.open("faults", true);
        return ifKept([&](const char *name, int absent) { return key.value(name, absent).toInt(); });
    }
    if (store == "server") {
        const std::string file = MacConfigPath::GetInstance()->GetAppConfigPath("ressrc/chs/upnest.svr");
        return QSettings(file.c_str(), QSettings::IniFormat).value("Common/TryNo", -1).toInt();
    }
    int last = store == "log" ? 0 : -1;
    if (store == "bookmarks") {
        for (const MacBookmark::Entry &entry : MacBookmark::entries())
            last = std::max(last, std::atoi(entry.path.c_str() + entry.path.rfind('/') + 1));
    } else if (store == "sdk") {
        vip_sdk::VipSdkCoreInterfaceImpl sdk;
        wchar_t *json = nullptr;
        const std::wstring before = LR"("nickname":"n)", text = sdk.GetUserInfoJson(&json) ? json : L"";
        sdk.FreeString(json);
        if (const auto at = text.find(before); at != std::wstring::npos)
            last = std::stoi(text.substr(at + before.size()));
    } else {
        std::ifstream file(MacConfigPath::GetInstance()->GetLogPath());
        for (std::string line; std::getline(file, line) && !file.eof();)
            if (const auto at = line.find("]  value "); at != std::string::npos)
                last = std::stoi(line.substr(at + 9));
    }
    return last;
}

/// What children leave to those who look.
struct Progress
{
    std::atomic<int> begun, done;
    std::atomic<qint64> longest; // milliseconds that a next writer took
    int seen;
    char expected[4096];
};

static Progress *sharedProgress(int writers)
{
    const std::size_t size = sizeof(Progress) * static_cast<std::size_t>(writers);
    return static_cast<Progress *>(::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
}

static pid_t forked(const std::function<void()> &work)
{
    std::cout.flush();
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

/// Runs `work` in a process of its own and prints its answer, what fell short; 1 if anything did, or it crashed.
static int inChild(const std::string &where, const std::function<std::string()> &work)
{
    const pid_t child = forked([&] {
        ::alarm(20);
        const std::string wrong = work();
        std::cout << (wrong.empty() ? "" : where + ": " + wrong + '\n') << std::flush;
        ::_exit(wrong.empty() ? 0 : 1);
    });
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFSIGNALED(status))
        std::cout << where << ": crash " << WTERMSIG(status) << '\n';
    return status == 0 ? 0 : 1;
}

/// False if it ended by itself before.
static bool killSoon(const std::function<void()> &work, int longestLife)
{
    static std::mt19937 random(std::random_device{}());
    const pid_t child = forked(work);
    ::usleep(random() % static_cast<unsigned int>(longestLife));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

/// Kills writers of a store; what fell short.
static int killWriters(const std::string &name, int rounds)
{
    Progress *const progress = sharedProgress(1);
    int fellShort = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::string where = "round " + std::to_string(round);
        inChild(where, [&] { return progress->begun = progress->done = readStore(name), ""; });
        const auto write = [&] {
            for (;; progress->done = progress->begun.load())
                writeStore(name, ++progress->begun);
        };
        if (!killSoon(write, 20'000) && ++fellShort > 0)
            std::cout << where << ": the writer ended by itself\n";
        fellShort += inChild(where, [&] {
            const int found = readStore(name);
            const bool isBetween = found == -1 && name == "sdk" && progress->begun % 7 == 0; // of two calls
            if (found != progress->done && found != progress->begun && !isBetween)
                return "neither old nor new";
            QElapsedTimer timer;
            timer.start();
            writeStore(name, progress->begun + 1);
            const qint64 time = timer.elapsed();
            progress->longest = std::max(progress->longest.load(), time);
            if (time > 10'000) // the promised five seconds, and as many for a busy machine
                return "the next writer waited";
            return readStore(name) == progress->begun + 1 ? "" : "the next writer was refused";
        });
    }
    std::cout << "longest next write: " << progress->longest << " ms\n";
    return fellShort;
}

/// Writers of so many lines, together or one after the other and killed soon; what fell short. Who was killed may leave
/// a piece of its own last line.
static int writeLog(int writers, int count, int least, int most, bool killed)
{
    // "w<writer> <number> xxx", of a length that looks like chance.
    const auto lineOf = [&](int writer, int number) {
        const auto length =
            static_cast<std::size_t>(least + (writer * 1'000'003LL + number) * 7919 % (most - least + 1));
        return 'w' + std::to_string(writer) + ' ' + std::to_string(number) + ' ' + std::string(length, 'x');
    };
    Progress *const progress = sharedProgress(writers);
    for (int writer = 0; writer < writers; ++writer) {
        const auto write = [&] {
            for (int number = 1; number <= count; ++number) {
                CommonFileLog::WriteLog(lineOf(writer, number));
                progress[writer].done = number;
            }
        };
        killed ? killSoon(write, 10'000) : forked(write) > 0;
    }
    while (::wait(nullptr) > 0) { }
    std::ifstream file(MacConfigPath::GetInstance()->GetLogPath());
    int fellShort = 0, pieces = killed ? writers : 0;
    for (std::string line; std::getline(file, line);) {
        const auto at = line.find("]  w");
        const int writer = at < 80 && line.compare(0, 2, "20") == 0 ? std::atoi(line.c_str() + at + 4) : -1;
        Progress *const its = writer >= 0 && writer < writers ? &progress[writer] : nullptr;
        const bool isNext = its && line.compare(at + 3, std::string::npos, lineOf(writer, its->seen + 1)) == 0;
        const bool isPiece = !isNext && (!its || its->seen >= its->done) && --pieces >= 0;
        if (isNext)
            ++its->seen;
        else if (!isPiece && ++fellShort < 10)
            std::cout << "torn or out of order: " << line.substr(0, 120) << '\n';
    }
    for (int writer = 0; writer < writers; ++writer) {
        const int missing = (killed ? progress[writer].done.load() : count) - progress[writer].seen;
        if (missing > 0 && ++fellShort < 10)
            std::cout << "missing: " << missing << " of writer " << writer << '\n';
    }
    return fellShort;
}

struct Task : ITask
{
    void run() override { }
};

/// What runs out of memory, and its answer: the same each time, or std::bad_alloc.
static std::string answerOf(const std::string &operation)
{
    std::string answer;
    if (operation == "log") {
        CommonFileLog::WriteLog("value 1");
        CommonFileLog::WriteLog(L"wide \u00fc");
    } else if (operation == "command-line") {
        const CCmdLineParser line(LR"(-open:"a b.pdf" /page=3 --name -long:0123456789012345678901234567890123)");
        answer = (line.GetVal(L"open") + line.GetVal(L"PAGE")).toStdString() + std::to_string(line.HasKey(L"-name"));
    } else if (operation == "digest") {
        const std::string path = MacConfigPath::GetInstance()->GetAppConfigPath("data/help.pdf");
        answer = OndEasyMd5(QString::fromStdString(path).toStdWString().c_str()).ToString().toStdString();
    } else if (operation == "worker-tasks") {
        TaskMgr manager;
        const auto atEnd = qScopeGuard([&] { manager.WaitTaskFinish(1000); });
        for (int i = 0; i < 20; ++i)
            manager.PushTask(std::make_shared<Task>());
    } else if (operation == "addresses") {
        answer = MacGlobalUrl::GetDefSvrHost(nullptr) + MacGlobalUrl::GetOfficialOcrInfoSvrUrl()
            + MacGlobalUrl::GetVipSvrHost() + MacGlobalUrl::GetHelpHtmlUrlA();
    } else { // the stores
        for (const std::string store : kStores)
            answer += store == "log" || store == "sdk" ? "" : std::to_string(readStore(store)) + ' ';
    }
    return answer;
}

/// Fails each allocation in turn, in a process that has or has not done the operation before; what fell short.
static int exhaust(const std::string &name, int step)
{
    Progress *const progress = sharedProgress(1);
    inChild(name, [&] { return answerOf(name).copy(progress->expected, sizeof progress->expected - 1), ""; });
    int fellShort = 0, runs = 0;
    for (const bool isWarm : {false, true}) {
        progress->done = 0;
        for (int k = 0; progress->done == 0 && fellShort < 10; k += step, ++runs) {
            const std::string where = name + (isWarm ? " again, allocation " : ", allocation ") + std::to_string(k);
            fellShort += inChild(where, [&] {
                MacGlobalConfig::isInternationalApp(); // asked once, and the default if that fails
                long before = held, clean = 0;
                for (int i = 0; isWarm && i < 3; ++i, before = held) {
                    answerOf(name);
                    clean = held - before;
                }
                bool isRight = true;
                try {
                    allowed = k;
                    const std::string answer = answerOf(name);
                    isRight = answer == progress->expected || (answer.empty() && name == "digest");
                } catch (const std::bad_alloc &) {
                } catch (const std::system_error &) { // no thread, or no path of the executable
                }
                progress->done = allowed >= 0 ? 1 : 0;
                allowed = -1;
                if (isWarm && held - before > std::max(0L, clean))
                    return "memory is lost";
                return !isRight                            ? "another answer"
                    : answerOf(name) != progress->expected ? "another answer afterwards"
                                                           : "";
            });
        }
    }
    std::cout << "runs: " << runs << '\n';
    return fellShort;
}

int main(int argc, char *argv[])
try {
    const std::vector<std::string> words(argv + 1, argv + argc);
    const auto number = [&](std::size_t at) { return std::stoi(words.at(at)); };
    const std::string command = words.at(0);
    ::getppid(); // where the operation begins, for who traces it
    if (command == "state") {
        for (const char *store : kStores)
            std::cout << store << ' ' << readStore(store) << '\n';
        return 0;
    }
    if (command == "write")
        return writeStore(words.at(1), number(2)), 0;
    if (command == "answer")
        return std::cout << answerOf(words.at(1)) << '\n', 0;
    if (command == "wait") // until something comes, which may be another executable in this one's place
        return std::cin.get(), std::cout << answerOf(words.at(1)) << '\n', 0;
    const int fellShort = command == "kill" ? killWriters(words.at(1), number(2))
        : command == "kill-log"             ? writeLog(number(1), 1'000'000, 1, 100'000, true)
        : command == "log"                  ? writeLog(number(1), number(2), number(3), number(4), false)
                                            : exhaust(words.at(1), number(2));
    std::cout << "fell short: " << fellShort << '\n';
    return fellShort == 0 ? 0 : 1;
} catch (const std::exception &error) {
    std::cout << "exception: " << error.what() << '\n';
    return 3;
}
