#pragma once

#include <os/availability.h>

// What the library uses of Core Foundation, from its documentation.

#pragma clang assume_nonnull begin

typedef const void *CFTypeRef;
typedef unsigned char Boolean;
typedef double CFTimeInterval;
typedef const struct __CFAllocator *CFAllocatorRef;

extern "C" {
extern const CFAllocatorRef _Null_unspecified kCFAllocatorDefault;
void CFRelease(CFTypeRef object);
}

#pragma clang assume_nonnull end
