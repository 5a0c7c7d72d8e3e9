#pragma once

#include "tools/inspect/Report.h"

#include <functional>
#include <stdexcept>
#include <vector>

namespace CLI {
class App;
}

namespace inspect {

/// Arguments that the inspector does not take.
class WrongUse : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Has an answer printed.
using Print = std::function<void(const Json &answer)>;
/// Does what an action is there for, and whether it came about. Throws WrongUse, or std::runtime_error when there is no
/// answer to print.
using Run = std::function<bool(const Print &print)>;

struct Action
{
    const char *name;
    const char *summary;
    /// Declares the action's arguments; what it gives is run after they were read.
    Run (*declare)(CLI::App &command);
    /// Answers come one after the other, as long as it goes on.
    bool isStream = false;
    /// The argument is a command line of its own, whose switches are not the inspector's.
    bool takesCommandLine = false;
};

/// Every action, in the order in which the help lists them.
[[nodiscard]] const std::vector<Action> &actions();

} // namespace inspect
