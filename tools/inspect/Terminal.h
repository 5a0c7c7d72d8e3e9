#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace inspect {

/// Reads a line from standard input, without its line feed; empty at the end of input. On a terminal `prompt` is shown
/// on standard error and nothing is echoed.
[[nodiscard]] std::string readSecret(const std::string &prompt);

/// A line on standard error that says that something goes on, gone at the end of the scope. Nothing where standard
/// error is no terminal.
class Progress
{
public:
    explicit Progress(std::string what);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void tell() const;

private:
    std::string m_what;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

/// Columns that UTF-8 text takes on a terminal.
[[nodiscard]] std::size_t widthOf(const std::string &text);

/// Whether signs beyond ASCII can be shown: the user's locale is one of UTF-8, and the terminal no dumb one.
[[nodiscard]] bool showsUtf8();

/// Starts a program in the background; whether it goes on for `patience`, or ends well before. It outlives this
/// process.
[[nodiscard]] bool isStarted(const std::vector<std::string> &words, std::chrono::milliseconds patience);

} // namespace inspect
