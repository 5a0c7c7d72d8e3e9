#pragma once

#import <Foundation/Foundation.h>
#include <sys/types.h>

// What the library uses of AppKit, from its documentation.

#pragma clang assume_nonnull begin

@class NSMenu;

@interface NSMenuItem : NSObject
@property (copy) NSString *title;
@property (nullable, strong) NSMenu *submenu;
@end

@interface NSMenu : NSObject
@property (copy) NSArray<NSMenuItem *> *itemArray;
@end

@interface NSWindow : NSObject
@end

@interface NSApplication : NSObject
@property (nullable, strong) NSMenu *mainMenu;
@property (nullable, readonly, weak) NSWindow *mainWindow;
@end

@interface NSScreen : NSObject
@property (class, readonly, nullable, strong) NSScreen *mainScreen;
@property (readonly) NSRect frame;
@end

typedef NSInteger NSModalResponse;
enum : NSModalResponse { NSModalResponseCancel = 0, NSModalResponseOK = 1 };

@interface NSOpenPanel : NSObject
@property (nullable, copy) NSURL *directoryURL API_AVAILABLE(macos(10.6));
@property (null_resettable, copy) NSString *prompt;
@property (readonly, copy) NSArray<NSURL *> *URLs;
@property BOOL allowsMultipleSelection;
@property BOOL canChooseDirectories;
@property BOOL canChooseFiles;
+ (NSOpenPanel *)openPanel;
- (NSModalResponse)runModal;
@end

@interface NSRunningApplication : NSObject
@property (nullable, readonly, copy) NSString *bundleIdentifier API_AVAILABLE(macos(10.6));
@property (readonly) pid_t processIdentifier API_AVAILABLE(macos(10.6));
@property (readonly, copy) NSString *description;
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid API_AVAILABLE(macos(10.6));
@end

API_AVAILABLE(macos(10.15))
@interface NSWorkspaceOpenConfiguration : NSObject
@property BOOL activates;
@property BOOL hides;
@property BOOL createsNewApplicationInstance;
@property (copy) NSArray<NSString *> *arguments;
+ (instancetype)configuration;
@end

typedef void (^OndLaunched)(NSRunningApplication *_Nullable app, NSError *_Nullable error);

@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace *sharedWorkspace;
@property (readonly, copy) NSArray<NSRunningApplication *> *runningApplications API_AVAILABLE(macos(10.6));
- (BOOL)openURL:(NSURL *)url;
- (nullable NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)bundleIdentifier API_AVAILABLE(macos(10.6));
- (void)openURL:(NSURL *)url
        configuration:(NSWorkspaceOpenConfiguration *)configuration
    completionHandler:(nullable OndLaunched)completionHandler API_AVAILABLE(macos(10.15));
- (void)openURLs:(NSArray<NSURL *> *)urls
    withApplicationAtURL:(NSURL *)applicationURL
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(nullable OndLaunched)completionHandler API_AVAILABLE(macos(10.15));
- (void)openApplicationAtURL:(NSURL *)applicationURL
               configuration:(NSWorkspaceOpenConfiguration *)configuration
           completionHandler:(nullable OndLaunched)completionHandler API_AVAILABLE(macos(10.15));
@end

typedef NSString *NSAccessibilityNotificationName;
typedef NSString *NSAccessibilityNotificationUserInfoKey;
enum NSAccessibilityPriorityLevel : NSInteger { NSAccessibilityPriorityHigh = 90 };

extern "C" {
extern __kindof NSApplication *_Null_unspecified NSApp;
extern NSAccessibilityNotificationName const NSAccessibilityAnnouncementRequestedNotification
    API_AVAILABLE(macos(10.7));
extern NSAccessibilityNotificationUserInfoKey const NSAccessibilityAnnouncementKey API_AVAILABLE(macos(10.7));
extern NSAccessibilityNotificationUserInfoKey const NSAccessibilityPriorityKey API_AVAILABLE(macos(10.9));
void NSAccessibilityPostNotificationWithUserInfo(
    id element, NSAccessibilityNotificationName notification,
    NSDictionary<NSAccessibilityNotificationUserInfoKey, id> *_Nullable userInfo) API_AVAILABLE(macos(10.7));
}

#pragma clang assume_nonnull end
