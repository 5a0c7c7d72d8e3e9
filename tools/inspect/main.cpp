#include "tools/inspect/Actions.h"
#include "tools/inspect/Doctor.h"
#include "tools/inspect/Report.h"
#include "tools/inspect/Sections.h"

#include <QLoggingCategory>
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <unistd.h>

namespace {

using inspect::Action;
using inspect::Json;
using inspect::Report;
using inspect::Section;
using inspect::WrongUse;

enum ExitStatus { kFine = 0, kSomethingIsWrong = 1, kWrongUse = 2 };

void printHelp(std::ostream &out)
{
    out << "usage: pdforvell-inspect [--json] [SECTION...]\n"
           "       pdforvell-inspect [--json] ACTION [ARGUMENT...]\n\n"
           "Says what the product's shared library answers on this machine.\n\n"
           "Sections, all by default:\n";
    const auto row = [&out](const std::string &name, const char *summary) {
        out << "  " << std::left << std::setw(30) << name << summary << '\n';
    };
    for (const Section &section : inspect::sections())
        row(section.name, section.summary);
    out << "\nActions:\n";
    for (const Action &action : inspect::actions())
        row(std::string(action.name) + " " + action.arguments, action.summary);
    out << "\nOptions:\n";
    row("--json", "one JSON object, keyed by section and getter");
    row("--help", "this text");
    row("--version", "the inspector's version");
    out << "\nExit status: 0 fine, 1 doctor found something or the answers could not be given, 2 wrong use.\n";
}

template <typename Entry> const Entry *named(const std::vector<Entry> &entries, const std::string &name)
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&name](const Entry &entry) { return entry.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

/// Adds the answers of the named sections, or of all; whether doctor found something.
bool addSections(const std::vector<std::string> &names, Report &report)
{
    bool problems = false;
    for (const std::string &name : names) {
        if (!named(inspect::sections(), name))
            throw WrongUse("no section or action called " + escaped(name));
    }
    for (const Section &section : inspect::sections()) {
        if (!names.empty() && std::find(names.begin(), names.end(), section.name) == names.end())
            continue;
        const Json answers = section.answers();
        problems = problems || (section.isExamination && inspect::hasProblems(answers));
        report.add(section.name, answers);
    }
    return problems;
}

/// Prints answers as they come, in JSON one object a line.
void follow(const Action &action, const std::vector<std::string> &arguments, bool json)
{
    action.follow(arguments, [&](const Json &answers) {
        Report report;
        report.add(action.name, answers);
        if (json)
            report.printJson(std::cout, true);
        else
            report.printText(std::cout, ::isatty(STDOUT_FILENO) == 1);
        std::cout.flush();
    });
}

int run(std::vector<std::string> arguments)
{
    bool json = false;
    while (!arguments.empty() && arguments.front().rfind("--", 0) == 0) {
        const std::string option = arguments.front();
        arguments.erase(arguments.begin());
        if (option == "--help") {
            printHelp(std::cout);
            return kFine;
        }
        if (option == "--version") {
            std::cout << "pdforvell-inspect " OND_VERSION "\n";
            return kFine;
        }
        if (option != "--json")
            throw WrongUse("no option called " + escaped(option));
        json = true;
    }

    Report report;
    bool problems = false;
    const Action *action = arguments.empty() ? nullptr : named(inspect::actions(), arguments.front());
    if (action && action->follow) {
        follow(*action, {arguments.begin() + 1, arguments.end()}, json);
        return kFine;
    }
    if (action)
        report.add(action->name, action->run({arguments.begin() + 1, arguments.end()}));
    else
        problems = addSections(arguments, report);

    if (json)
        report.printJson(std::cout);
    else
        report.printText(std::cout, ::isatty(STDOUT_FILENO) == 1);
    if (!std::cout.flush())
        throw std::runtime_error("the answers cannot be written");
    return problems ? kSomethingIsWrong : kFine;
}

} // namespace

int main(int argc, char *argv[])
{
    // The answers say it; QT_LOGGING_RULES brings the library's lines for its developers back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.info=false\ndefault.debug=false"));
    try {
        return run({argv + 1, argv + argc});
    } catch (const WrongUse &error) {
        std::cerr << "pdforvell-inspect: " << error.what() << "; see --help\n";
        return kWrongUse;
    } catch (const std::exception &error) {
        std::cerr << "pdforvell-inspect: " << escaped(error.what()) << '\n';
        return kSomethingIsWrong;
    }
}
