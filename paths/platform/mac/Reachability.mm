#include "paths/platform/Reachability_p.h"

#include <SystemConfiguration/SystemConfiguration.h>
#include <netinet/in.h>

namespace platform {

std::optional<ReachabilityFlags> zeroAddressReachability()
{
    @autoreleasepool {
        sockaddr_in zero{};
        zero.sin_len = sizeof zero;
        zero.sin_family = AF_INET;

        // Deprecated from macOS 14.4 on, and kept: nw_path_monitor answers later, on a queue, and this question is put
        // at once.
        SCNetworkReachabilityRef target =
            SCNetworkReachabilityCreateWithAddress(kCFAllocatorDefault, reinterpret_cast<const sockaddr *>(&zero));
        if (!target)
            return std::nullopt;
        SCNetworkReachabilityFlags flags = 0;
        const bool known = SCNetworkReachabilityGetFlags(target, &flags);
        CFRelease(target);
        if (!known)
            return std::nullopt;

        ReachabilityFlags answer;
        answer.reachable = (flags & kSCNetworkReachabilityFlagsReachable) != 0;
        answer.connectionRequired = (flags & kSCNetworkReachabilityFlagsConnectionRequired) != 0;
        return answer;
    }
}

} // namespace platform
