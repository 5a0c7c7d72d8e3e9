#include "runtime/CommonFileLog.h"

#include "config/MacConfigPath_p.h"
#include "config/MacGlobalConfig.h"

#include <QDateTime>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <pthread.h>
#include <stdexcept>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

static_assert(sizeof(wchar_t) == 4, "wide texts hold UTF-32");

namespace {

class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) { }
    ~FileDescriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

constexpr int kOpenFlags = O_APPEND | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

/// A file that may be written but not read.
int openForWritingOnly(const char *path)
{
    const int descriptor = ::open(path, O_WRONLY | kOpenFlags);
    struct stat status;
    if (descriptor < 0 || (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)))
        return descriptor;
    ::close(descriptor);
    return -1;
}

/// Opens for appending, and never waits for the reader of a FIFO. For reading too, although nothing is read: who holds
/// both ends of a FIFO gets no SIGPIPE when its reader goes away. Without O_CREAT first, which is the cheaper call
/// where the file exists.
int openLog(const char *path, bool mayCreate)
{
    const int descriptor = ::open(path, O_RDWR | kOpenFlags);
    if (descriptor < 0 && errno == EACCES)
        return openForWritingOnly(path);
    if (descriptor < 0 && errno == ENOENT && mayCreate)
        return ::open(path, O_RDWR | O_CREAT | kOpenFlags, 0666);
    return descriptor;
}

std::uintptr_t threadHandle()
{
    static_assert(sizeof(pthread_t) <= sizeof(std::uintptr_t));
    return std::uintptr_t(::pthread_self()); // a number here, a pointer there: no named cast takes both
}

long offsetFromUtcNow()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return local.tm_gmtoff;
}

/// What the process that first comes here leaves to its forks. Never destroyed: what ends after the program's own
/// objects may still log.
struct Origin
{
    const std::string path = MacConfigPath::GetInstance()->GetLogPath();
    const pid_t process = ::getpid();
    std::atomic<long> offsetFromUtc{offsetFromUtcNow()};
};

Origin &origin()
{
    static auto *const origin = new Origin;
    return *origin;
}

/// The local time, asked by process `pid`.
std::tm localTime(pid_t pid)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (pid == origin().process) {
        ::localtime_r(&now, &local);
        origin().offsetFromUtc = local.tm_gmtoff;
        return local;
    }
    // In the child of a fork, the lock in localtime_r() may belong to a thread that is not there to release it.
    const QDateTime asUtc = QDateTime::fromSecsSinceEpoch(now + origin().offsetFromUtc, Qt::UTC);
    local.tm_year = asUtc.date().year() - 1900;
    local.tm_mon = asUtc.date().month() - 1;
    local.tm_mday = asUtc.date().day();
    local.tm_hour = asUtc.time().hour();
    local.tm_min = asUtc.time().minute();
    local.tm_sec = asUtc.time().second();
    return local;
}

void appendNumber(std::string &to, std::uintptr_t number, int base = 10)
{
    char digits[24];
    to.append(digits, std::to_chars(digits, std::end(digits), number, base).ptr);
}

void appendTwoDigits(std::string &to, char separator, int number)
{
    to += {separator, static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

/// Written by hand: strftime() alone takes as long as a system call, and takes the lock, too.
std::string lineOf(const std::string &message)
{
    const pid_t pid = ::getpid();
    const std::tm local = localTime(pid);
    std::string line;
    line.reserve(message.size() + 100);
    appendNumber(line, static_cast<std::uintptr_t>(local.tm_year) + 1900);
    appendTwoDigits(line, '-', local.tm_mon + 1);
    appendTwoDigits(line, '-', local.tm_mday);
    appendTwoDigits(line, ' ', local.tm_hour);
    appendTwoDigits(line, ':', local.tm_min);
    appendTwoDigits(line, ':', local.tm_sec);
    line += " [pid:";
    appendNumber(line, static_cast<std::uintptr_t>(pid));
    line += " tid:0x";
    appendNumber(line, threadHandle(), 16);
    line += "]  ";
    line += message;
    line += '\n';
    return line;
}

/// Opens the log if it is on: if "mk.dat" says so, or if the file exists.
int openWhenOn(const char *path)
{
    // Whether the file was there last time: says which question is the cheaper one to begin with, and nothing else.
    static std::atomic<bool> wasThere{false};

    const bool mayCreate = MacGlobalConfig::IsEnableFileLog();
    if (!mayCreate && !wasThere && ::access(path, F_OK) != 0)
        return -1;
    const int descriptor = openLog(path, mayCreate);
    wasThere = descriptor >= 0;
    return descriptor;
}

/// Where the last line ends if that is not in a line feed, else -1; also for what is no file, or cannot be read.
off_t unfinishedEnd(int descriptor)
{
    char last = '\n';
    const off_t end = ::lseek(descriptor, -1, SEEK_END);
    return end >= 0 && ::read(descriptor, &last, 1) == 1 && last != '\n' ? end : -1;
}

/// Whether the last line was written in part only. A line that is being written looks the same for a moment. Writers of
/// long lines hold a lock meanwhile. A short one can be seen in part only while its write() crosses a page: SEEK_HOLE
/// waits for that write where the file system locks for it, as ext4 does, and then the end has moved.
bool endsInTornLine(int descriptor)
{
    const off_t end = unfinishedEnd(descriptor);
    if (end < 0)
        return false;
    ::lseek(descriptor, 0, SEEK_HOLE);
    const bool isBeingWritten = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    return !isBeingWritten && unfinishedEnd(descriptor) == end;
}

void writeLine(int descriptor, const std::string &message)
{
    constexpr std::size_t longLine = 512;
    std::string line = lineOf(message);
    if (endsInTornLine(descriptor))
        line.insert(0, 1, '\n');
    else if (line.size() > longLine)
        ::flock(descriptor, LOCK_SH | LOCK_NB);
    while (::write(descriptor, line.data(), line.size()) < 0 && errno == EINTR) { }
}

/// Writes the UTF-8 of a character, and returns where it ends. Throws for what is no character.
char *encode(char *to, char32_t c)
{
    const auto tail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        *to++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *to++ = static_cast<char>(0xC0 | (c >> 6));
        *to++ = tail(0);
    } else if (c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) {
        throw std::range_error("wstring_convert: to_bytes error");
    } else if (c < 0x10000) {
        *to++ = static_cast<char>(0xE0 | (c >> 12));
        *to++ = tail(6);
        *to++ = tail(0);
    } else {
        *to++ = static_cast<char>(0xF0 | (c >> 18));
        *to++ = tail(12);
        *to++ = tail(6);
        *to++ = tail(0);
    }
    return to;
}

} // namespace

bool CommonFileLog::IsLogEnable()
{
    const Origin *known = configPathOrNull() ? &origin() : nullptr; // for forks, whatever is asked next
    return MacGlobalConfig::IsEnableFileLog() || (known && std::filesystem::exists(known->path));
}

void CommonFileLog::WriteLog(const std::string &message)
{
    try {
        const FileDescriptor file(openWhenOn(origin().path.c_str()));
        if (file.get() >= 0)
            writeLine(file.get(), message);
    } catch (...) { // NOLINT(bugprone-empty-catch): a log must not disturb what it reports on
    }
}

void CommonFileLog::WriteLog(const std::wstring &message)
{
    WriteLog(wstringToString(message));
}

std::string CommonFileLog::wstringToString(const std::wstring &text)
{
    std::string bytes(4 * text.size(), '\0');
    char *end = bytes.data();
    for (const wchar_t c : text)
        end = encode(end, static_cast<char32_t>(c));
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
    return bytes;
}
