#include "paths/platform/Workspace_p.h"

#include "paths/platform/mac/Strings_p.h"

#import <AppKit/AppKit.h>
#include <cerrno>
#include <csignal>

namespace platform {

namespace {

/// Nil when an argument is no text.
NSWorkspaceOpenConfiguration *toNative(const LaunchRequest &request)
{
    NSMutableArray *arguments = [NSMutableArray array];
    for (const std::string &argument : request.arguments) {
        NSString *text = mac::toNSString(argument);
        if (!text)
            return nil;
        [arguments addObject:text];
    }
    NSWorkspaceOpenConfiguration *native = [NSWorkspaceOpenConfiguration configuration];
    [native setHides:request.hides];
    [native setActivates:request.activates];
    [native setCreatesNewApplicationInstance:request.createsNewInstance];
    [native setArguments:arguments];
    return native;
}

void report(const LaunchHandler &handler, NSRunningApplication *application, NSError *error)
{
    @autoreleasepool {
        if (error)
            handler({false, mac::toUtf8([error description]), 0});
        else
            handler({true, mac::toUtf8([application description]), [application processIdentifier]});
    }
}

NSURL *addressOf(const std::string &url)
{
    NSString *text = mac::toNSString(url);
    return [text length] > 0 ? [NSURL URLWithString:text] : nil;
}

NSURL *fileAddressOf(const std::string &path)
{
    NSString *text = mac::toNSString(path);
    return [text length] > 0 ? [NSURL fileURLWithPath:text] : nil;
}

} // namespace

bool isApplicationRunning(const std::string &bundleId)
{
    @autoreleasepool {
        NSString *identifier = mac::toNSString(bundleId);
        if (!identifier)
            return false;
        for (NSRunningApplication *application in [[NSWorkspace sharedWorkspace] runningApplications]) {
            if ([[application bundleIdentifier] isEqualToString:identifier])
                return true;
        }
        return false;
    }
}

bool isProcessRunning(int processId)
{
    @autoreleasepool {
        if (![NSRunningApplication runningApplicationWithProcessIdentifier:processId])
            return false;
        // Who waits on the main thread has no run loop meanwhile, without which the system goes on naming what has
        // ended.
        return ::kill(processId, 0) == 0 || errno != ESRCH;
    }
}

bool openUrl(const std::string &url)
{
    @autoreleasepool {
        NSURL *address = addressOf(url);
        return address && [[NSWorkspace sharedWorkspace] openURL:address];
    }
}

bool launch(const LaunchRequest &request, const LaunchHandler &handler)
{
    @autoreleasepool {
        NSURL *address = addressOf(request.url);
        NSURL *application = fileAddressOf(request.applicationPath);
        if (!address && (!request.url.empty() || !application))
            return false;
        NSWorkspace *workspace = [NSWorkspace sharedWorkspace];
        NSWorkspaceOpenConfiguration *configuration = toNative(request);
        if (!workspace || !configuration)
            return false;
        const LaunchHandler kept = handler; // a block holds references as such
        const auto completion = ^(NSRunningApplication *launched, NSError *error) { report(kept, launched, error); };
        if (!address)
            [workspace openApplicationAtURL:application configuration:configuration completionHandler:completion];
        else if (!application)
            [workspace openURL:address configuration:configuration completionHandler:completion];
        else
            [workspace openURLs:@[ address ]
                withApplicationAtURL:application
                       configuration:configuration
                   completionHandler:completion];
        return true;
    }
}

} // namespace platform
