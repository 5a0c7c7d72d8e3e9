#pragma once

#include "tools/inspect/Actions.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace inspect {

enum ExitStatus { kFine = 0, kSomethingIsWrong = 1, kWrongUse = 2 };

/// What an exit status of the inspector means.
struct StatusMeaning
{
    ExitStatus status;
    const char *meaning;
};

inline constexpr StatusMeaning kStatusMeanings[] = {
    {kFine, "all is well"},
    {kSomethingIsWrong, "doctor found something, or what was asked for did not come about"},
    {kWrongUse, "wrong use"},
};

/// The inspector's command line: options, sections and actions, as the help, the man page and the completions show it.
class CommandLine
{
public:
    CommandLine();

    /// Throws CLI::ParseError, whose status 0 means that help or the version was asked for, and WrongUse.
    void parse(int argc, const char *const *argv);
    /// What help or the version prints.
    [[nodiscard]] std::string text(const CLI::ParseError &request) const;

    [[nodiscard]] bool isJson() const { return m_isJson; }
    /// Whether what goes to standard output is to be coloured: as --color says; else on a terminal, unless NO_COLOR is
    /// set (no-color.org) or the terminal is a dumb one.
    [[nodiscard]] bool isColoured() const;
    /// "man", "complete-bash", "complete-zsh", "complete-fish", or empty.
    [[nodiscard]] const std::string &generated() const { return m_generated; }
    [[nodiscard]] const std::vector<std::string> &sections() const { return m_sections; }
    /// Null when sections are asked for.
    [[nodiscard]] const Action *action() const { return m_action; }
    [[nodiscard]] const Run &run() const { return m_run; }

    [[nodiscard]] const CLI::App &app() const { return m_app; }

private:
    void addCommonOptions(CLI::App &command);
    void refuseUnknownSections() const;

    CLI::App m_app{"Says what the product's shared library answers on this machine."};
    bool m_isJson = false;
    std::string m_colour = "auto";
    std::string m_generated;
    std::vector<std::string> m_sections;
    const Action *m_action = nullptr;
    Run m_run;
};

} // namespace inspect
