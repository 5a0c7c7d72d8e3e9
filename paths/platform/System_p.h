#pragma once

/// Facts about the system. Callable from any thread.
namespace platform {

/// The shell command that prints the maximum size of a shared-memory segment in bytes.
[[nodiscard]] const char *sharedMemorySizeCommand();

} // namespace platform
