#include "tools/inspect/Terminal.h"

#include <csignal>
#include <iostream>
#include <iterator>
#include <termios.h>
#include <unistd.h>

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

} // namespace inspect
