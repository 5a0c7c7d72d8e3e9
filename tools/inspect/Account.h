#pragma once

#include "tools/inspect/Report.h"

#include <functional>
#include <string>
#include <vector>

namespace inspect {

/// Who is logged in, and with what. Secrets only as whether they are there.
[[nodiscard]] Json account();

[[nodiscard]] Json login(const std::vector<std::string> &arguments);
[[nodiscard]] Json logout(const std::vector<std::string> &arguments);
[[nodiscard]] Json openPage(const std::vector<std::string> &arguments);

/// Hands on every change of the account, until SIGINT or SIGTERM.
void watch(const std::vector<std::string> &arguments, const std::function<void(const Json &)> &print);

} // namespace inspect
