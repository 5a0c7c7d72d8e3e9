#pragma once

#include "tools/inspect/Actions.h"

namespace inspect {

/// Everything that support asks for, on one page that a user can look at and send: all sections, the checks of doctor,
/// the end of the diagnostic log, and the versions. A self-contained HTML file without scripts, or JSON.
[[nodiscard]] Run report(CLI::App &command);

} // namespace inspect
