#pragma once

#include <cstdint>
#include <sys/socket.h>

using Boolean = unsigned char;
using CFTypeRef = const void *;
using CFAllocatorRef = const struct CFAllocator *;
using SCNetworkReachabilityRef = const struct SCNetworkReachability *;
using SCNetworkReachabilityFlags = std::uint32_t;

constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsReachable = 1U << 1;
constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsConnectionRequired = 1U << 2;

extern "C" {
/// To be released with CFRelease().
SCNetworkReachabilityRef SCNetworkReachabilityCreateWithAddress(CFAllocatorRef allocator, const sockaddr *address);
Boolean SCNetworkReachabilityGetFlags(SCNetworkReachabilityRef target, SCNetworkReachabilityFlags *flags);
/// Raises for NULL.
void CFRelease(CFTypeRef object);
}
