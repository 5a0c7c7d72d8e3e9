#pragma once

#include <string>

/// `text` with control characters as "\n", "\t" or "\x1b", so that no value can steer the terminal.
[[nodiscard]] std::string escaped(const std::string &text);

/// The same for JSON, where control characters stand in texts only and come out as "\u009b".
[[nodiscard]] std::string escapedJson(const std::string &json);
