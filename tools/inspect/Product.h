#pragma once

#include "tools/inspect/Report.h"

namespace inspect {

/// The product's names, addresses, ids and switches.
[[nodiscard]] Json product();

/// Who this installation is: edition, channel numbers, install time, versions, and other products on the machine.
/// Creates nothing: without the registry's folder, which its record would create, the record's getters are named under
/// "notAsked".
[[nodiscard]] Json identity();

} // namespace inspect
