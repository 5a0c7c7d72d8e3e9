#include "tools/orvell-account/CommandLine.h"

#include <CLI/CLI.hpp>
#include <QUrl>

namespace {

std::string checkWebAddress(const std::string &text)
{
    const QUrl url(QString::fromStdString(text), QUrl::StrictMode);
    const bool isOne = url.isValid() && !url.host().isEmpty()
        && (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"));
    return isOne ? "" : "no web address: " + text;
}

/// The adapters write this one with a single dash, which is a row of short options elsewhere.
std::string withTwoDashes(std::string argument)
{
    return argument.rfind("-url=", 0) == 0 ? '-' + argument : argument;
}

} // namespace

Command parse(std::vector<std::string> arguments)
{
    CLI::App app("Shows the account's login dialog and pages for the product's programs.", "orvell-account");
    app.set_help_flag("-h,--help", "Print this text and end");
    app.set_version_flag("-V,--version", "orvell-account " OND_VERSION, "Print the version and end");
    app.footer("Exit status:\n  0  done\n  1  not done, or declined\n  2  wrong use");
    std::string page;
    std::string url;
    bool isConfirmed = false;
    int action = 0;
    int logoutForever = 0;
    int unused = 0;
    CLI::Option *web = app.add_option("--open_web", page, "Open the login dialog, or a page");
    web->check(CLI::IsMember({"login", "main"}));
    CLI::Option *open = app.add_option("--open_action", action, "Open the account's page")->check(CLI::IsMember({1}));
    app.add_option("--url", url, "Address of the page, instead of the account's own")->check(checkWebAddress);
    app.add_option("--logoutforever", logoutForever, "1: delete the account, after a question")
        ->check(CLI::IsMember({1}));
    app.add_flag("--yes", isConfirmed, "Do not ask before the account is deleted");
    for (const char *number : {"--pid", "--vipfrom", "--subpid", "--fid"})
        app.add_option(number, unused, "Passed by the product's programs, and not used");

    arguments.erase(std::remove(arguments.begin(), arguments.end(), ""), arguments.end());
    std::transform(arguments.begin(), arguments.end(), arguments.begin(), withTwoDashes);
    std::reverse(arguments.begin(), arguments.end()); // as the parser takes them
    Command command;
    try {
        app.parse(arguments);
    } catch (const CLI::CallForHelp &) {
        command.text = app.help();
        return command;
    } catch (const CLI::CallForVersion &request) {
        command.text = request.what() + std::string("\n");
        return command;
    } catch (const CLI::ParseError &error) {
        throw WrongUse(error.what());
    }
    if (web->empty() && open->empty())
        throw WrongUse("neither --open_web nor --open_action says what to open");
    command.isConfirmed = isConfirmed;
    command.url = QString::fromStdString(url);
    if (logoutForever == 1)
        command.action = Command::Action::logoutForever;
    else if (page == "login")
        command.action = Command::Action::login;
    return command;
}
