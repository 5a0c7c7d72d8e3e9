#pragma once

#include "tools/inspect/Report.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace inspect {

/// Arguments that the inspector does not take.
class WrongUse : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

struct Action
{
    const char *name;
    const char *arguments;
    const char *summary;
    /// Throws WrongUse.
    Json (*run)(const std::vector<std::string> &arguments);
    /// In place of `run`: answers as long as it goes on, each handed to `print`. Throws WrongUse.
    void (*follow)(const std::vector<std::string> &arguments, const std::function<void(const Json &)> &print) = nullptr;
};

/// Every action, in the order in which the help lists them.
[[nodiscard]] const std::vector<Action> &actions();

} // namespace inspect
