#include "paths/platform/System_p.h"

namespace platform {

const char *sharedMemorySizeCommand()
{
    return "sysctl -n kern.sysv.shmmax";
}

} // namespace platform
