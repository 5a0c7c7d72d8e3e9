#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#import <AppKit/AppKit.h>

namespace test {

using Lines = std::vector<std::string>;

/// What the tests lay over GNUstep, so that it passes for macOS: what it answers is set here, what it was asked is
/// found here. Everything works without being set, so that whole programs run on it too.
struct FakeMac
{
    /// The calls, each with all that it was told: "create /a options=2048".
    Lines asked;

    std::string executable; ///< empty: the running one
    std::vector<std::string> installedApplications;
    std::vector<std::pair<std::string, int>> runningApplications; ///< identifier and process
    bool opensUrls = true;
    /// What a launch ends with, on another thread: an application, or an error with this text.
    std::string launchError;

    NSInteger panelResponse = NSModalResponseOK;
    Lines panelUrls; ///< paths; "" is a URL that has none

    bool createsBookmarks = true;
    bool staleBookmarks = false;
    bool deniesAccess = false;
    std::map<std::string, std::string> groupContainers;

    NSSize screen = {1440, 900};
    std::uint32_t reachability = 2;
    bool reachabilityUnknown = false;
    int reachabilityTargets = 0; ///< made and not released
    std::uint32_t timebaseDenominator = 3; ///< of 125 nanoseconds
    std::uint64_t ticks = 0;
};

FakeMac &fakeMac();

/// Makes a main menu with one item whose submenu has these items.
void setMainMenu(const Lines &titles);
/// The titles of the top-level item and of the items of its submenu.
[[nodiscard]] Lines mainMenuTitles();

} // namespace test
