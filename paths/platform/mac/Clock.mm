#include "paths/platform/Clock_p.h"

#include <mach/mach_time.h>

namespace platform {

namespace {

/// Nanoseconds per tick, as a ratio.
mach_timebase_info_data_t timebase()
{
    mach_timebase_info_data_t info{};
    if (mach_timebase_info(&info) != 0 || info.denom == 0)
        return {1, 1};
    return info;
}

} // namespace

std::uint64_t monotonicNanoseconds()
{
    static const mach_timebase_info_data_t ratio = timebase();
    return mach_absolute_time() * ratio.numer / ratio.denom;
}

} // namespace platform
