#pragma once

#include <QString>
#include <stdexcept>
#include <string>
#include <vector>

/// What the account helper is asked for.
struct Command
{
    enum class Action { login, openPage, logoutForever } action = Action::openPage;
    bool isConfirmed = false; ///< not to be asked about
    QString url; ///< of the page; empty for the account's own web site
    std::string text; ///< to be printed in place of everything else: help or the version
};

/// A command line that the helper does not understand.
class WrongUse : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Understands what the account adapters start the helper with, and "--yes", which they do not pass. Empty arguments
/// mean nothing. Throws WrongUse.
[[nodiscard]] Command parse(std::vector<std::string> arguments);
