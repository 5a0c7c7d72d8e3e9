#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <cstdint>

// What the library uses of Core Graphics, from its documentation.

enum CGEventSourceStateID : std::int32_t {
    kCGEventSourceStatePrivate = -1,
    kCGEventSourceStateCombinedSessionState = 0,
    kCGEventSourceStateHIDSystemState = 1
};
enum CGEventType : std::uint32_t { kCGEventNull = 0 };
#define kCGAnyInputEventType (static_cast<CGEventType>(~0))

struct CGPoint
{
    double x, y;
};
struct CGSize
{
    double width, height;
};
struct CGRect
{
    CGPoint origin;
    CGSize size;
};

extern "C" CFTimeInterval CGEventSourceSecondsSinceLastEventType(CGEventSourceStateID stateID, CGEventType eventType)
    API_AVAILABLE(macos(10.4));
