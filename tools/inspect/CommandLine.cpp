#include "tools/inspect/CommandLine.h"

#include "tools/inspect/Checks.h"
#include "tools/inspect/Sections.h"

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

namespace inspect {

namespace {

/// The word that was probably meant, as a question.
std::string suggestion(const std::string &word)
{
    std::vector<std::string> names = {"--json", "--help", "--version", "--color"};
    for (const Section &section : sections())
        names.emplace_back(section.name);
    for (const Action &action : actions())
        names.emplace_back(action.name);
    const std::string name = nearest(word, names);
    return name.empty() ? "" : "; did you mean " + name + "?";
}

std::string sectionNames()
{
    std::string names = "Sections, all by default:";
    for (const Section &section : sections()) {
        const std::string name = section.name;
        names += "\n  " + name + std::string(name.size() < 16 ? 16 - name.size() : 1, ' ') + section.summary;
    }
    return names;
}

std::string statuses()
{
    std::string lines = "Exit status:";
    for (const auto &[status, meaning] : kStatusMeanings)
        lines += "\n  " + std::to_string(status) + "  " + meaning;
    return lines;
}

} // namespace

CommandLine::CommandLine()
{
    m_app.name("pdforvell-inspect");
    m_app.require_subcommand(0, 1);
    m_app.get_formatter()->label("SUBCOMMAND", "ACTION [ARGUMENT...]");
    m_app.set_version_flag("-V,--version", "pdforvell-inspect " OND_VERSION, "Print the inspector's version and end");
    addCommonOptions(m_app);
    m_app
        .add_option("--generate", m_generated, "Print the man page, or the completions of a shell, in place of answers")
        ->check(CLI::IsMember({"man", "complete-bash", "complete-zsh", "complete-fish"}))
        ->option_text("KIND");
    m_app.add_option("SECTION", m_sections, "What to ask for; all by default")->option_text("...");
    m_app.footer(statuses()); // the actions take it over
    for (const Action &action : actions()) {
        CLI::App *command = m_app.add_subcommand(action.name, action.summary);
        command->group("Actions");
        addCommonOptions(*command);
        command->prefix_command(action.takesCommandLine);
        command->callback([this, &action, run = action.declare(*command)] {
            m_action = &action;
            m_run = run;
        });
    }
    m_app.footer(sectionNames() + "\n\n" + statuses());
}

void CommandLine::addCommonOptions(CLI::App &command)
{
    command.set_help_flag("-h,--help", "Print this text and end");
    command.add_flag("--json", m_isJson, "Print one JSON object, keyed by section and getter");
    command.add_option("--color", m_colour, "Colour the text: auto (on a terminal), always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->option_text("WHEN");
}

void CommandLine::parse(int argc, const char *const *argv)
{
    try {
        m_app.parse(argc, argv);
    } catch (const CLI::ExtrasError &) {
        std::vector<std::string> extras = m_app.remaining(true);
        extras.erase(std::remove(extras.begin(), extras.end(), "--"), extras.end());
        const std::string word = extras.empty() ? "" : extras.front();
        throw WrongUse("cannot do anything with " + word + suggestion(word));
    }
    if (!m_action)
        return refuseUnknownSections();
    if (!m_sections.empty())
        throw WrongUse(std::string("sections and the action ") + m_action->name + " do not go together");
}

void CommandLine::refuseUnknownSections() const
{
    for (const std::string &name : m_sections) {
        const auto isIt = [&name](const Section &section) { return section.name == name; };
        if (std::none_of(inspect::sections().begin(), inspect::sections().end(), isIt))
            throw WrongUse("no section or action called " + name + suggestion(name));
    }
}

std::string CommandLine::text(const CLI::ParseError &request) const
{
    if (request.get_name() == "CallForVersion")
        return std::string(request.what()) + '\n';
    const std::vector<CLI::App *> commands = m_app.get_subcommands();
    return commands.empty() ? m_app.help() : commands.front()->help(m_app.get_name());
}

bool CommandLine::isColoured() const
{
    if (m_colour != "auto")
        return m_colour == "always";
    const char *none = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    return ::isatty(STDOUT_FILENO) == 1 && !(none && *none) && terminal && std::string(terminal) != "dumb";
}

} // namespace inspect
