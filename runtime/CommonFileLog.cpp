#include "runtime/CommonFileLog.h"

#include "config/MacConfigPath_p.h"
#include "config/MacGlobalConfig.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <pthread.h>
#include <stdexcept>
#include <string_view>
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

/// The process id, asked once per process: the call costs as much as all else in the head of a line.
pid_t processId()
{
    static std::atomic<pid_t> known{0};
    static const bool isForgottenByForks = ::pthread_atfork(nullptr, nullptr, [] { known = 0; }) == 0;

    pid_t id = known.load(std::memory_order_relaxed);
    if (id == 0) {
        id = ::getpid();
        known.store(isForgottenByForks ? id : 0, std::memory_order_relaxed);
    }
    return id;
}

/// The bytes of one line up to the message. Written by hand: strftime alone takes as long as a system call.
class Head
{
public:
    Head()
    {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        ::localtime_r(&now, &local);
        putNumber(local.tm_year + 1900, 10);
        putTwoDigits('-', local.tm_mon + 1);
        putTwoDigits('-', local.tm_mday);
        putTwoDigits(' ', local.tm_hour);
        putTwoDigits(':', local.tm_min);
        putTwoDigits(':', local.tm_sec);
        put(" [pid:");
        putNumber(processId(), 10);
        put(" tid:0x");
        putNumber(threadHandle(), 16);
        put("]  ");
    }

    [[nodiscard]] std::string_view text() const { return {m_text, m_size}; }

private:
    void put(std::string_view text) { m_size += text.copy(m_text + m_size, sizeof m_text - m_size); }
    void putTwoDigits(char separator, int number)
    {
        const char text[] = {separator, static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
        put({text, sizeof text});
    }
    template <typename Number> void putNumber(Number number, int base)
    {
        char digits[24];
        const char *end = std::to_chars(digits, digits + sizeof digits, number, base).ptr;
        put({digits, static_cast<std::size_t>(end - digits)});
    }

    char m_text[128];
    std::size_t m_size = 0;
};

/// The log's file. Never destroyed: what ends after the program's own objects may still log.
const std::string &logPath()
{
    static const auto *const path = new std::string(MacConfigPath::GetInstance()->GetLogPath());
    return *path;
}

/// Whether the file was there last time. Says which question is the cheaper one to begin with, and nothing else.
std::atomic<bool> g_wasThere{false};

/// Opens the log if it is on: if "mk.dat" says so, or if the file exists.
int openWhenOn(const char *path)
{
    if (MacGlobalConfig::IsEnableFileLog())
        return openLog(path, true);

    if (!g_wasThere.load(std::memory_order_relaxed) && ::access(path, F_OK) != 0)
        return -1;
    const int descriptor = openLog(path, false);
    g_wasThere.store(descriptor >= 0, std::memory_order_relaxed);
    return descriptor;
}

/// Joins the parts of a line, on the stack where it is short, and writes it at once.
void writeLine(int descriptor, const std::string &message)
{
    const Head head;
    const std::string_view begin = head.text();
    const std::size_t size = begin.size() + message.size() + 1;
    char shortLine[512];
    std::string longLine;
    char *line = shortLine;
    if (size > sizeof shortLine) {
        longLine.resize(size);
        line = longLine.data();
    }
    begin.copy(line, begin.size());
    message.copy(line + begin.size(), message.size());
    line[size - 1] = '\n';

    while (::write(descriptor, line, size) < 0 && errno == EINTR) { }
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
    return MacGlobalConfig::IsEnableFileLog() || (configPathOrNull() && std::filesystem::exists(logPath()));
}

void CommonFileLog::WriteLog(const std::string &message)
{
    try {
        const FileDescriptor file(openWhenOn(logPath().c_str()));
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
