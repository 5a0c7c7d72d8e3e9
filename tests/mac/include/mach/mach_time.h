#pragma once

#include <cstdint>

struct mach_timebase_info_data_t
{
    std::uint32_t numer, denom;
};

extern "C" std::uint64_t mach_absolute_time();
/// 0 (KERN_SUCCESS) or an error.
extern "C" int mach_timebase_info(mach_timebase_info_data_t *info);
