#include "tools/inspect/Terminal.h"

#include <QByteArray>
#include <QString>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cwchar>
#include <iostream>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

extern char **environ; // NOLINT(readability-redundant-declaration): macOS declares it nowhere

namespace inspect {

namespace {

constexpr int kEnds[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

/// How the terminal was before it was silenced.
termios g_before;

void restoreAndEnd(int signal)
{
    ::tcsetattr(STDIN_FILENO, TCSANOW, &g_before);
    ::raise(signal); // whose handling is the default again
}

/// No echo on the terminal for the lifetime of a scope, and not beyond the process when a signal ends that.
class NoEcho
{
public:
    NoEcho()
    {
        m_isSet = ::tcgetattr(STDIN_FILENO, &g_before) == 0;
        if (!m_isSet)
            return;
        struct sigaction restoring = {};
        restoring.sa_handler = restoreAndEnd;
        restoring.sa_flags = static_cast<int>(SA_RESETHAND);
        for (std::size_t i = 0; i < std::size(kEnds); ++i) {
            ::sigaction(kEnds[i], nullptr, &m_handlers[i]);
            if (m_handlers[i].sa_handler != SIG_IGN)
                ::sigaction(kEnds[i], &restoring, nullptr);
        }
        termios silent = g_before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~NoEcho()
    {
        if (!m_isSet)
            return;
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &g_before);
        for (std::size_t i = 0; i < std::size(kEnds); ++i)
            ::sigaction(kEnds[i], &m_handlers[i], nullptr);
        std::cerr << '\n';
    }
    NoEcho(const NoEcho &) = delete;
    NoEcho &operator=(const NoEcho &) = delete;

private:
    struct sigaction m_handlers[std::size(kEnds)] = {};
    bool m_isSet = false;
};

} // namespace

std::string readSecret(const std::string &prompt)
{
    if (::isatty(STDIN_FILENO) == 1)
        std::cerr << prompt << std::flush;
    const NoEcho noEcho;
    std::string line;
    std::getline(std::cin, line);
    return line;
}

Progress::Progress(std::string what) : m_what(std::move(what)) { }

Progress::~Progress()
{
    if (::isatty(STDERR_FILENO) == 1)
        std::cerr << "\r\033[K" << std::flush;
}

void Progress::tell() const
{
    const auto passed = std::chrono::steady_clock::now() - m_begin;
    if (::isatty(STDERR_FILENO) == 1)
        std::cerr << '\r' << m_what << " ... " << std::chrono::duration_cast<std::chrono::seconds>(passed).count()
                  << " s" << std::flush;
}

std::size_t widthOf(const std::string &text)
{
    static const bool isUtf8 = std::setlocale(LC_CTYPE, "C.UTF-8") || std::setlocale(LC_CTYPE, "UTF-8");
    std::size_t width = 0;
    for (const wchar_t character : QString::fromStdString(text).toStdWString())
        width += static_cast<std::size_t>(std::max(isUtf8 ? ::wcwidth(character) : 1, 0));
    return width;
}

bool showsUtf8()
{
    const char *terminal = std::getenv("TERM");
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char *value = std::getenv(name);
        if (value && *value) {
            const QString locale = QString::fromUtf8(value).remove(QLatin1Char('-'));
            return locale.endsWith(QLatin1String("UTF8"), Qt::CaseInsensitive)
                && !(terminal && std::string(terminal) == "dumb");
        }
    }
    return false;
}

bool isStarted(const std::vector<std::string> &words, std::chrono::milliseconds patience)
{
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string &word : words)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    pid_t process = 0;
    if (::posix_spawn(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0)
        return false;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    int status = 0;
    while (::waitpid(process, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= deadline)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace inspect
