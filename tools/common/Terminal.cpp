#include "tools/common/Terminal.h"

#include <iostream>
#include <termios.h>
#include <unistd.h>

namespace {

bool isTerminal()
{
    return ::isatty(STDIN_FILENO) == 1;
}

/// No echo on the terminal for the lifetime of a scope.
class NoEcho
{
public:
    NoEcho()
    {
        m_isSet = ::tcgetattr(STDIN_FILENO, &m_before) == 0;
        if (!m_isSet)
            return;
        termios silent = m_before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~NoEcho()
    {
        if (!m_isSet)
            return;
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
        std::cerr << '\n';
    }
    NoEcho(const NoEcho &) = delete;
    NoEcho &operator=(const NoEcho &) = delete;

private:
    termios m_before{};
    bool m_isSet = false;
};

} // namespace

std::string readLine(const std::string &prompt)
{
    if (isTerminal())
        std::cerr << prompt << std::flush;
    std::string line;
    std::getline(std::cin, line);
    return line;
}

std::string readSecret(const std::string &prompt)
{
    const NoEcho noEcho;
    return readLine(prompt);
}
