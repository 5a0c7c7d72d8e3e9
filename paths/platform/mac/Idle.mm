#include "paths/platform/Idle.h"

#include <CoreGraphics/CoreGraphics.h>

namespace platform {

double secondsSinceLastInput()
{
    return CGEventSourceSecondsSinceLastEventType(kCGEventSourceStateHIDSystemState, kCGAnyInputEventType);
}

} // namespace platform
