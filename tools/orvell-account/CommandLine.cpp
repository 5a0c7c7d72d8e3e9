#include "tools/orvell-account/CommandLine.h"

#include <QUrl>

namespace {

[[noreturn]] void refuse(const QString &argument)
{
    throw WrongUse("cannot do anything with \"" + argument.toStdString() + '"');
}

bool isNumber(const QString &text)
{
    bool ok = false;
    text.toInt(&ok);
    return ok;
}

bool isWebAddress(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() && !url.host().isEmpty()
        && (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"));
}

} // namespace

Command parse(const QStringList &arguments)
{
    static const QStringList numbers = {"--pid", "--vipfrom", "--subpid", "--fid"};
    Command command;
    bool isAsked = false;
    bool logoutForever = false;
    for (const QString &argument : arguments) {
        if (argument.isEmpty())
            continue;
        const QString name = argument.section(QLatin1Char('='), 0, 0);
        const QString value = argument.section(QLatin1Char('='), 1);
        if (argument == QLatin1String("--open_web=login") || argument == QLatin1String("--open_web=main")
            || argument == QLatin1String("--open_action=1")) {
            isAsked = true;
            if (value == QLatin1String("login"))
                command.action = Command::Action::login;
        } else if (argument == QLatin1String("--logoutforever=1")) {
            logoutForever = true;
        } else if (argument == QLatin1String("--yes")) {
            command.isConfirmed = true;
        } else if (name == QLatin1String("-url") && isWebAddress(value)) {
            command.url = value;
        } else if (!numbers.contains(name) || !isNumber(value)) {
            refuse(argument);
        }
    }
    if (!isAsked)
        throw WrongUse("neither --open_web nor --open_action says what to open");
    if (logoutForever)
        command.action = Command::Action::logoutForever;
    return command;
}
