#include "paths/platform/SystemLog_p.h"

#include "paths/platform/mac/Strings_p.h"

namespace platform {

void systemLog(const std::string &message)
{
    @autoreleasepool {
        NSString *text = mac::toNSString(message);
        if (!text) // a path may be no UTF-8: better read wrongly than not at all
            text = [NSString stringWithCString:message.c_str() encoding:NSISOLatin1StringEncoding];
        NSLog(@"%@", text);
    }
}

} // namespace platform
