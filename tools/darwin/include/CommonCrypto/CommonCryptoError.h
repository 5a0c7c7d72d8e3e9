#pragma once

#include <cstdint>

enum : std::int32_t { kCCSuccess = 0 };
