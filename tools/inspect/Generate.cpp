#include "tools/inspect/Generate.h"

#include "tools/inspect/CommandLine.h"
#include "tools/inspect/Sections.h"

#include <sstream>

namespace inspect {

namespace {

using Options = std::vector<const CLI::Option *>;

Options optionsOf(const CLI::App &app)
{
    return app.get_options([](const CLI::Option *option) { return option->nonpositional(); });
}

Options argumentsOf(const CLI::App &app)
{
    return app.get_options([](const CLI::Option *option) { return !option->nonpositional(); });
}

std::vector<const CLI::App *> commandsOf(const CLI::App &app)
{
    return app.get_subcommands([](const CLI::App *) { return true; });
}

/// "-h", "--help" of an option.
std::vector<std::string> namesOf(const CLI::Option &option)
{
    std::vector<std::string> names;
    for (const std::string &name : option.get_snames())
        names.push_back('-' + name);
    for (const std::string &name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

std::string joined(const std::vector<std::string> &words, const std::string &between)
{
    std::string line;
    for (const std::string &word : words)
        line += (line.empty() ? "" : between) + word;
    return line;
}

bool takesFiles(const CLI::App &command)
{
    return command.get_name() == "digest" || command.get_name() == "report";
}

/// Every word that may stand in the place of the first one.
std::vector<std::string> firstWords(const CLI::App &app)
{
    std::vector<std::string> words;
    for (const Section &section : sections())
        words.emplace_back(section.name);
    for (const CLI::App *command : commandsOf(app))
        words.push_back(command->get_name());
    return words;
}

std::vector<std::string> switchesOf(const CLI::App &app)
{
    std::vector<std::string> words;
    for (const CLI::Option *option : optionsOf(app)) {
        const std::vector<std::string> names = namesOf(*option);
        words.insert(words.end(), names.begin(), names.end());
    }
    return words;
}

/// With what roff and shells would take for their own masked by `mask`.
std::string masked(const std::string &text, const std::string &special, const std::string &mask)
{
    std::string result;
    for (const char c : text)
        result += special.find(c) == std::string::npos ? std::string(1, c) : mask + c;
    return result;
}

std::string roff(const std::string &text)
{
    std::string result;
    for (const char c : text)
        result += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    return result;
}

void addRow(std::ostream &out, const std::string &name, const std::string &text)
{
    out << ".TP\n\\fB" << roff(name) << "\\fR\n" << roff(text) << '\n';
}

void addOptions(std::ostream &out, const CLI::App &app)
{
    for (const CLI::Option *option : optionsOf(app)) {
        const std::string value = option->get_type_size() > 0 ? ' ' + option->get_option_text() : "";
        addRow(out, joined(namesOf(*option), ", ") + value, option->get_description());
    }
}

std::string manPage(const CLI::App &app)
{
    std::ostringstream out;
    const std::string &name = app.get_name();
    out << ".TH PDFORVELL\\-INSPECT 1 \"\" \"" OND_VERSION "\" \"PDF Orvell\"\n.SH NAME\n"
        << roff(name) << " \\- " << roff("say what the product's shared library answers on this machine") << '\n'
        << ".SH SYNOPSIS\n.B " << roff(name) << "\n[\\fIOPTION\\fR...] [\\fISECTION\\fR...]\n.br\n.B " << roff(name)
        << "\n[\\fIOPTION\\fR...] \\fIACTION\\fR [\\fIARGUMENT\\fR...]\n.SH DESCRIPTION\n"
        << "Answers are printed section by section, all of them when none is named. Looking creates nothing on disk.\n"
        << ".SH SECTIONS\n";
    for (const Section &section : sections())
        addRow(out, section.name, section.summary);
    out << ".SH ACTIONS\n";
    for (const CLI::App *command : commandsOf(app)) {
        std::string line = command->get_name();
        for (const CLI::Option *argument : argumentsOf(*command))
            line += argument->get_required() ? ' ' + argument->get_name() : " [" + argument->get_name() + ']';
        if (command->get_prefix_command())
            line += " COMMAND-LINE";
        addRow(out, line, command->get_description());
        for (const CLI::Option *argument : argumentsOf(*command))
            out << ".br\n\\fI" << roff(argument->get_name()) << "\\fR: " << roff(argument->get_description()) << '\n';
        for (const CLI::Option *option : optionsOf(*command))
            if (!app.get_option_no_throw(namesOf(*option).back()))
                out << ".br\n\\fB" << roff(joined(namesOf(*option), ", "))
                    << "\\fR: " << roff(option->get_description()) << '\n';
    }
    out << ".SH OPTIONS\n";
    addOptions(out, app);
    out << ".SH EXIT STATUS\n.TS\ntab(|);\nlb l.\n";
    for (const auto &[status, meaning] : kStatusMeanings)
        out << status << '|' << meaning << '\n';
    out << ".TE\n.SH ENVIRONMENT\n";
    addRow(out, "NO_COLOR", "No colours unless --color=always, when it is set and not empty.");
    addRow(out, "TERM", "No colours on a terminal called dumb.");
    addRow(out, "QT_LOGGING_RULES", "default.info=true has the library tell its developers what it opens.");
    addRow(out, "XDG_DATA_HOME", "Not on macOS: the folder of the user's data in place of ~/.local/share.");
#ifdef OND_LOCAL_VIPSDK
    addRow(out, "ONDVIPSDK_DATA_DIR", "The folder of the accounts on this machine, an absolute path.");
#endif
    out << ".SH EXAMPLES\n";
    addRow(out, name + " doctor", "What is wrong with this installation, and how to mend it.");
    addRow(out, name + " --json locations switches", "Two sections, for a script.");
    addRow(out, name + " parse '-open:\"a b.pdf\" /page=3'", "What the product makes of a command line.");
    return "'\\\" t\n" + out.str();
}

std::string bashCompletion(const CLI::App &app)
{
    std::ostringstream out;
    out << "# bash completion for " << app.get_name() << "\n"
        << "_pdforvell_inspect()\n{\n"
        << "    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} action= each\n"
        << "    for each in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n        case $each in\n        ";
    std::vector<std::string> names;
    for (const CLI::App *command : commandsOf(app))
        names.push_back(command->get_name());
    out << joined(names, " | ") << ") action=$each; break ;;\n        esac\n    done\n"
        << "    case $previous in\n"
        << "    --color | =) COMPREPLY=($(compgen -W 'auto always never' -- \"${word#=}\")); return ;;\n"
        << "    --generate) COMPREPLY=($(compgen -W 'man complete-bash complete-zsh complete-fish' -- \"$word\")); "
           "return ;;\n    esac\n    case $action in\n";
    for (const CLI::App *command : commandsOf(app)) {
        out << "    " << command->get_name() << ") COMPREPLY=($(compgen " << (takesFiles(*command) ? "-f " : "")
            << "-W '" << joined(switchesOf(*command), " ") << "' -- \"$word\")) ;;\n";
    }
    out << "    *) COMPREPLY=($(compgen -W '" << joined(firstWords(app), " ") << ' ' << joined(switchesOf(app), " ")
        << "' -- \"$word\")) ;;\n    esac\n}\ncomplete -F _pdforvell_inspect " << app.get_name() << '\n';
    return out.str();
}

std::string zshOption(const CLI::Option &option)
{
    const std::vector<std::string> names = namesOf(option);
    const std::string value = option.get_type_size() > 0 ? ":" + option.get_lnames().front() + ':'
            + (option.get_lnames().front() == "color" ? "(auto always never)"
                                                      : "(man complete-bash complete-zsh complete-fish)")
                                                         : "";
    const std::string form = names.size() > 1 ? "{" + joined(names, ",") + "}'" : "'" + names.front();
    return form + (value.empty() ? "" : "=") + '[' + masked(masked(option.get_description(), "[]:", "\\"), "'", "'\\'")
        + ']' + value + "'";
}

std::string zshCompletion(const CLI::App &app)
{
    std::ostringstream out;
    const auto row = [](const std::string &name, const std::string &text) {
        return "        '" + name + ':' + masked(masked(text, ":", "\\"), "'", "'\\'") + "'\n";
    };
    out << "#compdef " << app.get_name() << "\n\n_pdforvell_inspect()\n{\n    local -a words\n    words=(\n";
    for (const Section &section : sections())
        out << row(section.name, section.summary);
    for (const CLI::App *command : commandsOf(app))
        out << row(command->get_name(), command->get_description());
    out << "    )\n    _arguments \\\n";
    for (const CLI::Option *option : optionsOf(app))
        out << "        " << zshOption(*option) << " \\\n";
    out << "        '*:: :->words' && return\n    [[ $state == words ]] || return\n"
        << "    if (( CURRENT > 1 )) && [[ $words[1] == (digest|report) ]]; then\n        _files\n    else\n"
        << "        _describe 'section or action' words\n    fi\n}\n\n"
        << "_pdforvell_inspect \"$@\"\n";
    return out.str();
}

std::string fishCompletion(const CLI::App &app)
{
    std::ostringstream out;
    const std::string begin = "complete -c " + app.get_name() + ' ';
    const auto quoted = [](const std::string &text) { return '\'' + masked(text, "'\\", "\\") + '\''; };
    out << begin << "-f\n";
    for (const Section &section : sections())
        out << begin << "-a " << section.name << " -d " << quoted(section.summary) << '\n';
    for (const CLI::App *command : commandsOf(app)) {
        out << begin << "-n __fish_use_subcommand -a " << command->get_name() << " -d "
            << quoted(command->get_description()) << '\n';
    }
    for (const CLI::Option *option : optionsOf(app)) {
        out << begin;
        for (const std::string &name : option->get_snames())
            out << "-s " << name << ' ';
        for (const std::string &name : option->get_lnames())
            out << "-l " << name << ' ';
        if (option->get_type_size() > 0)
            out << "-x -a '"
                << (option->get_lnames().front() == "color" ? "auto always never"
                                                            : "man complete-bash complete-zsh complete-fish")
                << "' ";
        out << "-d " << quoted(option->get_description()) << '\n';
    }
    out << begin << "-n '__fish_seen_subcommand_from digest report' -F\n";
    return out.str();
}

} // namespace

std::string generated(const CLI::App &app, const std::string &kind)
{
    if (kind == "complete-bash")
        return bashCompletion(app);
    if (kind == "complete-zsh")
        return zshCompletion(app);
    if (kind == "complete-fish")
        return fishCompletion(app);
    return manPage(app);
}

} // namespace inspect
