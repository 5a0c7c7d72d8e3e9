#include "paths/platform/Reachability_p.h"

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

namespace platform {

namespace {

constexpr std::uint32_t kRouteUp = 0x0001;
constexpr std::uint32_t kRouteReject = 0x0200;

bool isUsable(std::uint32_t flags)
{
    return (flags & kRouteUp) && !(flags & kRouteReject);
}

/// One line of /proc/net/route: interface, destination, gateway, flags, three counters, mask (all hexadecimal).
bool isDefaultRoute4(const std::string &line)
{
    std::istringstream fields(line);
    std::string interface, gateway;
    std::uint32_t destination = 0, flags = 0, refCount = 0, use = 0, metric = 0, mask = 0;
    fields >> interface >> std::hex >> destination >> gateway >> flags >> refCount >> use >> std::dec >> metric
        >> std::hex >> mask;
    return fields && destination == 0 && mask == 0 && isUsable(flags);
}

/// One line of /proc/net/ipv6_route: destination and its prefix length, source and its prefix length, next hop, metric,
/// two counters, flags (all hexadecimal), interface.
bool isDefaultRoute6(const std::string &line)
{
    std::istringstream fields(line);
    std::string destination, destinationLength, source, sourceLength, nextHop, metric, refCount, use, interface;
    std::uint32_t flags = 0;
    fields >> destination >> destinationLength >> source >> sourceLength >> nextHop >> metric >> refCount >> use
        >> std::hex >> flags >> interface;
    return fields && destinationLength == "00" && interface != "lo" && isUsable(flags);
}

bool anyLine(std::istream &lines, bool (*matches)(const std::string &))
{
    for (std::string line; std::getline(lines, line);) {
        if (matches(line))
            return true;
    }
    return false;
}

} // namespace

std::optional<ReachabilityFlags> zeroAddressReachability()
{
    std::ifstream routes4("/proc/net/route");
    std::ifstream routes6("/proc/net/ipv6_route");
    if (!routes4 && !routes6)
        return std::nullopt;
    ReachabilityFlags flags;
    flags.reachable = anyLine(routes4, isDefaultRoute4) || anyLine(routes6, isDefaultRoute6);
    return flags;
}

} // namespace platform
