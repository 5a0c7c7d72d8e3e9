#pragma once

#include <cstdint>
#include <optional>
#include <string>
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
    NSArray *runningApplications = nil; ///< the numbers of their processes
    bool launchFails = false; ///< else 4711 has been launched

    NSInteger panelResponse = NSModalResponseOK;
    std::string panelPath; ///< of the second URL: the first one has none
    bool hasMainWindow = false;

    bool staleBookmarks = false, deniesAccess = false;
    int resolvedUrls = 0; ///< that live

    std::optional<std::uint32_t> reachability = 2;
    int reachabilityTargets = 0; ///< made and not released
    std::uint64_t ticks = 0; ///< 0: those of the running machine
};

FakeMac &fakeMac();

/// A menu item that is its own submenu, and can be the application around a main menu.
NSMenuItem *menuItem(NSString *title, NSArray *submenu);

} // namespace test
