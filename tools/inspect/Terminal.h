#pragma once

#include <string>

namespace inspect {

/// Reads a line from standard input, without its line feed; empty at the end of input. On a terminal `prompt` is shown
/// on standard error and nothing is echoed.
[[nodiscard]] std::string readSecret(const std::string &prompt);

} // namespace inspect
