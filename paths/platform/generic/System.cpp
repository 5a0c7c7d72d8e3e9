#include "paths/platform/System_p.h"

namespace platform {

const char *sharedMemorySizeCommand()
{
    // Not sysctl: it is no part of a minimal installation.
    return "cat /proc/sys/kernel/shmmax";
}

} // namespace platform
