#pragma once

#include "tools/inspect/Report.h"

#include <string>
#include <vector>

namespace inspect {

/// The product's well-known files and folders. Creates nothing: getters that would create a folder are named under
/// "notAsked".
[[nodiscard]] Json paths();

/// The same with all getters asked, so that their folders are created.
[[nodiscard]] Json createPaths(const std::vector<std::string> &arguments);

} // namespace inspect
