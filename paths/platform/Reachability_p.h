#pragma once

#include <optional>

/// Network reachability. Callable from any thread.
namespace platform {

struct ReachabilityFlags
{
    bool reachable = false;
    bool connectionRequired = false;
};

/// How the zero address can be reached, or nothing when that cannot be determined.
/// Elsewhere than on macOS: reachable when a default route is up.
[[nodiscard]] std::optional<ReachabilityFlags> zeroAddressReachability();

} // namespace platform
