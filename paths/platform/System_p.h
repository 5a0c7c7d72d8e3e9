#pragma once

#include <cstdint>

/// Facts about the system. Callable from any thread.
namespace platform {

/// The maximum size of a shared-memory segment in bytes; 0 when the system does not tell.
[[nodiscard]] std::uint64_t sharedMemorySize();

} // namespace platform
