#include "tools/inspect/Terminal.h"

#include <iostream>
#include <termios.h>
#include <unistd.h>

namespace inspect {

namespace {

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
