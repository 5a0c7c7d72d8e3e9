#include "paths/platform/Applications_p.h"

#include "paths/platform/mac/Strings_p.h"

#import <AppKit/AppKit.h>

namespace platform {

bool isApplicationInstalled(const std::string &bundleId)
{
    @autoreleasepool {
        NSString *identifier = mac::toNSString(bundleId);
        if ([identifier length] == 0)
            return false;
        return [[NSWorkspace sharedWorkspace] URLForApplicationWithBundleIdentifier:identifier] != nil;
    }
}

} // namespace platform
