#pragma once

#include "tools/inspect/Actions.h"

namespace inspect {

/// The languages of the menu, in its order, and the one in use. Creates nothing: a getter that would create the
/// registry's folder is named under "notAsked".
[[nodiscard]] Json languages();

/// The language in use, after the one with the given name was chosen, and those to choose from. Creates the registry's
/// folder. Throws WrongUse for a name that is not in the menu, std::runtime_error when the choice cannot be stored.
[[nodiscard]] Run language(CLI::App &command);

} // namespace inspect
