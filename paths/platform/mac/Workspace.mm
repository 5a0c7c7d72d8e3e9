#include "paths/platform/Workspace.h"

#include "paths/platform/mac/Strings.h"

#import <AppKit/AppKit.h>

namespace platform {

bool isApplicationRunning(const std::string &bundleId)
{
    @autoreleasepool {
        NSString *identifier = mac::toNSString(bundleId);
        if (!identifier)
            return false;
        for (NSRunningApplication *application in [[NSWorkspace sharedWorkspace] runningApplications]) {
            if ([[application bundleIdentifier] isEqualToString:identifier])
                return true;
        }
        return false;
    }
}

bool openUrl(const std::string &url)
{
    @autoreleasepool {
        NSString *text = mac::toNSString(url);
        NSURL *address = text ? [NSURL URLWithString:text] : nil;
        return address && [[NSWorkspace sharedWorkspace] openURL:address];
    }
}

} // namespace platform
