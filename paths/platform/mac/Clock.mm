#include "paths/platform/Clock_p.h"

#include <mach/mach_time.h>

namespace platform {

std::uint64_t monotonicTicks()
{
    return mach_absolute_time();
}

Timebase monotonicTimebase()
{
    mach_timebase_info_data_t info{};
    if (mach_timebase_info(&info) != 0 || info.denom == 0)
        return {};
    return {info.numer, info.denom};
}

} // namespace platform
