#pragma once

/// Input activity. Callable from any thread.
namespace platform {

/// Seconds since the last input event of any kind.
/// macOS: of the hardware event state. Elsewhere: of the input that this application received, counted from the start
/// of the application object; infinite without one.
[[nodiscard]] double secondsSinceLastInput();

} // namespace platform
