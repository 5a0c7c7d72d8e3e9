#include "runtime/CommonFileLog.h"

#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <pthread.h>
#include <stdexcept>
#include <sys/stat.h>
#include <type_traits>
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

/// Keeps the SIGPIPE of a reader that goes away from ending the process.
class SigpipeBlocker
{
public:
    SigpipeBlocker()
    {
        sigemptyset(&m_sigpipe);
        sigaddset(&m_sigpipe, SIGPIPE);
        m_wasPending = isPending();
        pthread_sigmask(SIG_BLOCK, &m_sigpipe, &m_previous);
    }
    ~SigpipeBlocker()
    {
        if (!m_wasPending && isPending()) {
            int signal = 0;
            sigwait(&m_sigpipe, &signal);
        }
        pthread_sigmask(SIG_SETMASK, &m_previous, nullptr);
    }
    SigpipeBlocker(const SigpipeBlocker &) = delete;
    SigpipeBlocker &operator=(const SigpipeBlocker &) = delete;

private:
    static bool isPending()
    {
        sigset_t pending;
        sigemptyset(&pending);
        sigpending(&pending);
        return sigismember(&pending, SIGPIPE) == 1;
    }

    sigset_t m_sigpipe{};
    sigset_t m_previous{};
    bool m_wasPending = false;
};

/// Opens for appending. Without O_CREAT first, which is the cheaper call where the file exists; without ever waiting
/// for the reader of a FIFO.
int openLog(const char *path, bool mayCreate)
{
    constexpr int flags = O_WRONLY | O_APPEND | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    const int descriptor = ::open(path, flags);
    if (descriptor >= 0 || errno != ENOENT || !mayCreate)
        return descriptor;
    return ::open(path, flags | O_CREAT, 0666);
}

void writeOnce(int descriptor, const std::string &line)
{
    while (::write(descriptor, line.data(), line.size()) < 0 && errno == EINTR) { }
}

std::uintptr_t threadHandle()
{
    static_assert(sizeof(pthread_t) <= sizeof(std::uintptr_t));
    if constexpr (std::is_pointer_v<pthread_t>)
        return reinterpret_cast<std::uintptr_t>(::pthread_self());
    else
        return static_cast<std::uintptr_t>(::pthread_self());
}

template <typename Number> void appendNumber(std::string &text, Number number, int base)
{
    char digits[24];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number, base).ptr);
}

void appendLocalTime(std::string &text)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    char formatted[64];
    text.append(formatted, std::strftime(formatted, sizeof formatted, "%Y-%m-%d %H:%M:%S", &local));
}

std::string lineOf(const std::string &message)
{
    constexpr std::size_t headSize = 80;
    std::string line;
    line.reserve(headSize + message.size());
    appendLocalTime(line);
    line.append(" [pid:");
    appendNumber(line, ::getpid(), 10);
    line.append(" tid:0x");
    appendNumber(line, threadHandle(), 16);
    line.append("]  ").append(message).push_back('\n');
    return line;
}

void appendLine(const std::string &message)
{
    const std::string path = MacConfigPath::GetInstance()->GetLogPath();
    const bool enabled = MacGlobalConfig::IsEnableFileLog();
    struct stat status
    {
    };
    if (!enabled && ::stat(path.c_str(), &status) != 0)
        return;

    const FileDescriptor file(openLog(path.c_str(), enabled));
    if (file.get() < 0 || ::fstat(file.get(), &status) != 0)
        return;
    const std::string line = lineOf(message);
    if (S_ISREG(status.st_mode)) {
        writeOnce(file.get(), line);
    } else {
        const SigpipeBlocker blocker;
        writeOnce(file.get(), line);
    }
}

/// Bytes of a character in UTF-8. Throws for what is no character.
std::size_t utf8Length(char32_t c)
{
    if (c < 0x80)
        return 1;
    if (c < 0x800)
        return 2;
    if ((c >= 0xD800 && c < 0xE000) || c > 0x10FFFF)
        throw std::range_error("wstring_convert: to_bytes error");
    return c < 0x10000 ? 3 : 4;
}

char *encode(char *to, char32_t c)
{
    const auto tail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    switch (utf8Length(c)) {
    case 1:
        *to++ = static_cast<char>(c);
        break;
    case 2:
        *to++ = static_cast<char>(0xC0 | (c >> 6));
        *to++ = tail(0);
        break;
    case 3:
        *to++ = static_cast<char>(0xE0 | (c >> 12));
        *to++ = tail(6);
        *to++ = tail(0);
        break;
    default:
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
    return MacGlobalConfig::IsEnableFileLog() || std::filesystem::exists(MacConfigPath::GetInstance()->GetLogPath());
}

void CommonFileLog::WriteLog(const std::string &message)
{
    try {
        appendLine(message);
    } catch (...) { // NOLINT(bugprone-empty-catch): a log must not disturb what it reports on
    }
}

void CommonFileLog::WriteLog(const std::wstring &message)
{
    WriteLog(wstringToString(message));
}

std::string CommonFileLog::wstringToString(const std::wstring &text)
{
    std::size_t size = 0;
    for (const wchar_t c : text)
        size += utf8Length(static_cast<char32_t>(c));

    std::string bytes(size, '\0');
    char *to = bytes.data();
    for (const wchar_t c : text)
        to = encode(to, static_cast<char32_t>(c));
    return bytes;
}
