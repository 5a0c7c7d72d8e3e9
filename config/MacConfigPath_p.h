#pragma once

#include "config/MacConfigPath.h"

#include <system_error>

// For those who must not throw. Callable from any thread.

/// The running executable's canonical path. The first one that can be made is remembered: an update may then replace or
/// move the application, and nothing here notices. Empty when the platform does not tell, and when no canonical path
/// can be made, which `error` says.
[[nodiscard]] std::string executablePath(std::error_code &error);

/// MacConfigPath::GetInstance(); null where that would throw.
[[nodiscard]] const MacConfigPath *configPathOrNull();
