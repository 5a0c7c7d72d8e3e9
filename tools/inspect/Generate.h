#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace inspect {

/// The man page or a shell's completions of the command line, so that they say what the help says. `kind` is one of
/// "man", "complete-bash", "complete-zsh" and "complete-fish".
[[nodiscard]] std::string generated(const CLI::App &app, const std::string &kind);

} // namespace inspect
