#pragma once

#include "tools/inspect/Actions.h"

#include <string>

namespace inspect {

/// The program that shows account pages.
[[nodiscard]] std::string accountHelperPath();

/// Who is logged in, and with what. Secrets only as whether they are there.
[[nodiscard]] Json account();

[[nodiscard]] Run login(CLI::App &command);
[[nodiscard]] Run logout(CLI::App &command);
/// False also when the helper has failed within its first seconds.
[[nodiscard]] Run openPage(CLI::App &command);
/// Hands on every change of the account, until SIGINT or SIGTERM, or until it cannot be printed.
[[nodiscard]] Run watch(CLI::App &command);

} // namespace inspect
