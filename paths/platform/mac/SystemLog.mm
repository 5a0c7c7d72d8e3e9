#include "paths/platform/SystemLog.h"

#include "paths/platform/mac/Strings.h"

namespace platform {

void systemLog(const std::string &message)
{
    @autoreleasepool {
        NSLog(@"%@", mac::toNSString(message));
    }
}

} // namespace platform
