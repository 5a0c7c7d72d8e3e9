#pragma once

#include "config/Export.h"

#import <Foundation/Foundation.h>

// The forms of MacUtils.h for Objective-C++ callers.

/// Whether an application with exactly this bundle identifier is running; false for nil.
ONDPDFTOOLUTILS_EXPORT bool IsProcessRunningOC(NSString *bundleId);

/// The path two components higher when the last component of `path` is "MacOS_SymLink"; otherwise, and for nil, nil.
/// Autoreleased.
ONDPDFTOOLUTILS_EXPORT NSString *getAppDirByMacOSSymLinkPath(NSString *path);
