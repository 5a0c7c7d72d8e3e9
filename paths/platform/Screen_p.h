#pragma once

#include <utility>

/// The user's screens. Main thread only.
namespace platform {

/// Width and height of the main screen in points; zeros without a screen.
[[nodiscard]] std::pair<double, double> mainScreenSize();

} // namespace platform
