#include "paths/platform/System_p.h"

#include "paths/RegularFile_p.h"

#include <cstdlib>

namespace platform {

std::uint64_t sharedMemorySize()
{
    return std::strtoull(readRegularFile("/proc/sys/kernel/shmmax", 64).bytes.constData(), nullptr, 10);
}

} // namespace platform
