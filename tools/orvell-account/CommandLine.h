#pragma once

#include <QString>
#include <QStringList>
#include <stdexcept>

/// What the account helper is asked for.
struct Command
{
    enum class Action { login, openPage, logoutForever } action = Action::openPage;
    bool isConfirmed = false; ///< not to be asked about
    QString url; ///< of the page; empty for the account's own web site
};

/// A command line that the helper does not understand.
class WrongUse : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Understands what the account adapters start the helper with, and "--yes", which they do not pass. Empty arguments
/// mean nothing. Throws WrongUse.
[[nodiscard]] Command parse(const QStringList &arguments);
