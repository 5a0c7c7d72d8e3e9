#pragma once

#include <string>

/// Reads a line from standard input. On a terminal `prompt` is shown on standard error; a secret is not echoed. Without
/// the line feed; empty at the end of input.
[[nodiscard]] std::string readLine(const std::string &prompt);
[[nodiscard]] std::string readSecret(const std::string &prompt);
