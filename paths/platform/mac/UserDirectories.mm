#include "paths/platform/UserDirectories_p.h"

#include "paths/platform/mac/Strings_p.h"

namespace platform {

std::string applicationSupportDirectory()
{
    @autoreleasepool {
        NSArray *folders = NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory, NSUserDomainMask, YES);
        NSString *first = [folders firstObject];
        return first ? std::string([first fileSystemRepresentation]) : std::string();
    }
}

std::string groupContainer(const std::string &groupId)
{
    @autoreleasepool {
        NSString *group = mac::toNSString(groupId);
        if (!group)
            return {};
        NSURL *container = [[NSFileManager defaultManager] containerURLForSecurityApplicationGroupIdentifier:group];
        return mac::toUtf8([container path]);
    }
}

} // namespace platform
