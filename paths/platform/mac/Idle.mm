#include "paths/platform/Idle_p.h"

#include <CoreGraphics/CoreGraphics.h>

namespace platform {

double secondsSinceLastInput()
{
    @autoreleasepool {
        return CGEventSourceSecondsSinceLastEventType(kCGEventSourceStateHIDSystemState, kCGAnyInputEventType);
    }
}

} // namespace platform
