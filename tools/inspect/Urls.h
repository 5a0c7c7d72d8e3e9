#pragma once

#include "tools/inspect/Report.h"

namespace inspect {

/// Every service address, after the three facts that choose among them: edition, package kind, test setting.
[[nodiscard]] Json urls();

} // namespace inspect
