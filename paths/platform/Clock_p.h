#pragma once

#include <cstdint>

/// The monotonic clock. Callable from any thread.
namespace platform {

/// Nanoseconds per tick, as a ratio.
struct Timebase
{
    std::uint32_t numerator = 1;
    std::uint32_t denominator = 1;
};

[[nodiscard]] std::uint64_t monotonicTicks();
[[nodiscard]] Timebase monotonicTimebase();

} // namespace platform
