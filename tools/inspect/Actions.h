#pragma once

#include "tools/inspect/Report.h"

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
};

/// Every action, in the order in which the help lists them.
[[nodiscard]] const std::vector<Action> &actions();

} // namespace inspect
