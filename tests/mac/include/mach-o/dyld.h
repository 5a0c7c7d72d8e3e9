#pragma once

#include <cstdint>

/// 0, or -1 when the buffer is too small: `size` then receives what is needed.
extern "C" int _NSGetExecutablePath(char *buffer, std::uint32_t *size);
