#include "paths/platform/Clock_p.h"

#include <ctime>

namespace platform {

std::uint64_t monotonicNanoseconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U + static_cast<std::uint64_t>(now.tv_nsec);
}

} // namespace platform
