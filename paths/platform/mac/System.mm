#include "paths/platform/System.h"

namespace platform {

const char *sharedMemorySizeCommand()
{
    return "sysctl -n kern.sysv.shmmax";
}

} // namespace platform
