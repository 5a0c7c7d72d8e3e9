#pragma once

#include "tools/inspect/Report.h"

namespace inspect {

/// The product's names, addresses, ids and switches.
[[nodiscard]] Json product();

/// Who this installation is: edition, channel numbers, install time, versions, and other products on the machine.
[[nodiscard]] Json identity();

} // namespace inspect
