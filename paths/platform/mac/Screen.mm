#include "paths/platform/Screen_p.h"

#import <AppKit/AppKit.h>

namespace platform {

std::pair<double, double> mainScreenSize()
{
    @autoreleasepool {
        NSScreen *screen = [NSScreen mainScreen];
        if (!screen)
            return {0.0, 0.0};
        const NSSize size = [screen frame].size;
        return {size.width, size.height};
    }
}

} // namespace platform
