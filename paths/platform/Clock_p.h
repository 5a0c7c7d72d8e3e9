#pragma once

#include <cstdint>

/// The monotonic clock. Callable from any thread.
namespace platform {

/// Nanoseconds since some moment in the past.
[[nodiscard]] std::uint64_t monotonicNanoseconds();

} // namespace platform
