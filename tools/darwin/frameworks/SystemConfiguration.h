#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <cstdint>
#include <sys/socket.h>

// What the library uses of System Configuration, from its documentation.

#pragma clang assume_nonnull begin

#define OND_REACHABILITY API_DEPRECATED("Use nw_path_monitor_t instead", macos(10.3, 14.4))

typedef const struct __SCNetworkReachability *SCNetworkReachabilityRef;
enum SCNetworkReachabilityFlags_t : std::uint32_t {
    kSCNetworkReachabilityFlagsReachable = 1U << 1,
    kSCNetworkReachabilityFlagsConnectionRequired = 1U << 2
};
typedef std::uint32_t SCNetworkReachabilityFlags;

extern "C" {
SCNetworkReachabilityRef _Nullable SCNetworkReachabilityCreateWithAddress(
    CFAllocatorRef _Nullable allocator, const struct sockaddr *address) OND_REACHABILITY;
Boolean SCNetworkReachabilityGetFlags(SCNetworkReachabilityRef target,
                                      SCNetworkReachabilityFlags *flags) OND_REACHABILITY;
}

#pragma clang assume_nonnull end
