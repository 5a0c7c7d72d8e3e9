#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#import <AppKit/AppKit.h>

namespace test {

using Lines = std::vector<std::string>;
using Applications = std::vector<std::pair<std::string, int>>; ///< identifier and process

/// What the tests lay over GNUstep, so that it passes for macOS: what it answers is set here, what it was asked is
/// found here. Everything works without being set, so that whole programs run on it too.
struct FakeMac
{
    /// The calls, each with all that it was told: "create /a options=2048".
    Lines asked;

    std::string executable; ///< empty: the running one
    Lines installedApplications;
    Applications runningApplications;
    std::optional<Applications> told; ///< what the library was told last; a turn of the main run loop resets it
    bool opensUrls = true;
    /// What a launch ends with, on another thread: an application, or an error with this text.
    std::string launchError;

    NSInteger panelResponse = NSModalResponseOK;
    Lines panelUrls; ///< paths; "" is a URL that has none
    bool hasMainWindow = false;

    bool createsBookmarks = true;
    bool staleBookmarks = false;
    bool deniesAccess = false;
    int resolvedUrls = 0; ///< that live
    bool ownsGroups = false; ///< by its entitlements

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
