#pragma once

#include "tools/inspect/Actions.h"

namespace inspect {

/// The product's well-known files and folders. Creates nothing: getters that would create a folder are named under
/// "notAsked".
[[nodiscard]] Json paths();

/// The same with all getters asked, so that their folders are created.
[[nodiscard]] Run createPaths(CLI::App &command);

} // namespace inspect
