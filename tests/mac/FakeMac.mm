#import "tests/mac/FakeMac.h"

#include "tests/support/Answer.h"

#include <CoreGraphics/CoreGraphics.h>
#include <SystemConfiguration/SystemConfiguration.h>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mach-o/dyld.h>
#include <mach/mach_time.h>
#include <netinet/in.h>
#include <sstream>
#include <thread>

namespace fs = std::filesystem;

using test::fakeMac;

static std::string utf8Of(NSString *text)
{
    return text ? [text UTF8String] : "nil";
}

static std::string executable()
{
    return fakeMac().executable.empty() ? fs::read_symlink("/proc/self/exe").string() : fakeMac().executable;
}

/// As on macOS the environment names the user's home; GNUstep asks the user database.
static std::string homeFolder()
{
    const char *home = std::getenv("CFFIXED_USER_HOME");
    return home ? home : "/";
}

static NSError *refusal()
{
    return [NSError errorWithDomain:@"refused" code:1 userInfo:@{NSLocalizedDescriptionKey : @"For the user."}];
}

template <typename... Parts> static void ask(const Parts &...parts)
{
    std::ostringstream call;
    (call << ... << parts);
    fakeMac().asked.push_back(call.str());
}

static void launch(const std::string &what, Configuration *with, Completion completion)
{
    ask(what, with ? "" : " unconfigured");
    Completion kept = Block_copy(completion);
    std::thread([kept, fails = fakeMac().launchFails] {
        @autoreleasepool {
            kept(fails ? nil : (id) @4711, fails ? refusal() : nil);
            Block_release(kept);
        }
    }).detach();
}

test::FakeMac &test::fakeMac()
{
    static FakeMac mac;
    return mac;
}

/// A method that says what it was set to.
#define SETTER(name, Type, ...)                                                                                        \
    -(void)name : (Type)value                                                                                          \
    {                                                                                                                  \
        ask(__VA_ARGS__);                                                                                              \
    }
// For the library, which hides what it does not say is its own.
#pragma GCC visibility push(default)

/// What the runtime keeps: here, since the build asks for the cases outside of their environment.
ANSWER(extern "C" const char *__lsan_default_suppressions(),
       "leak:libobjc.so\nleak:libgnustep-base.so\nleak:libgnustep-gui.so\n")

// Foundation

/// NSString, fileSystemRepresentation; Technical Q&A QA1173, "Text Encodings in VFS": names that the system gives out
/// are decomposed.
@implementation NSString (FakeMac)
ANSWER(-(const char *)fileSystemRepresentation, [[self decomposedStringWithCanonicalMapping] UTF8String])
@end

/// NSError, description: the domain, too; the localized description is for users.
@implementation NSError (FakeMac)
ANSWER(-(NSString *)description, [self domain])
@end

ANSWER(extern "C" NSString *NSHomeDirectoryForUser(NSString *), @(homeFolder().c_str()))

/// "NSSearchPathForDirectoriesInDomains": a list, in the order in which to look.
extern "C" NSArray *NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory, NSSearchPathDomainMask domain,
                                                        BOOL expand)
{
    const bool support = directory == NSApplicationSupportDirectory && domain == NSUserDomainMask && expand;
    const std::string folder = homeFolder() + "/Library/" + (support ? "Application Support" : "GNUstep");
    return @[ @(folder.c_str()), @"/Network/Library" ];
}

@implementation NSBundle (FakeMac)
+ (NSBundle *)mainBundle
{
    fs::path path = fs::path(executable()).parent_path();
    if (path.parent_path().filename() / path.filename() == "Contents/MacOS")
        path = path.parent_path().parent_path();
    return [NSBundle bundleWithPath:@(path.c_str())];
}

/// CFBundleExecutable, and Core Foundation's published CFBundle_Executable.c: Contents/MacOS/ and the name in the list,
/// whoever runs; nil where no such file is.
- (NSString *)executablePath
{
    NSString *named = [[self infoDictionary] objectForKey:@"CFBundleExecutable"];
    const std::string program = utf8Of([self bundlePath]) + "/Contents/MacOS/" + utf8Of(named);
    return fs::exists(program) ? @(program.c_str()) : nil;
}
ANSWER(-(NSDictionary *)infoDictionary,
       [NSDictionary dictionaryWithContentsOfFile:[[self bundlePath] stringByAppendingString:@"/Contents/Info.plist"]])
@end

@implementation NSFileManager (GroupContainers)
/// NSFileManager, containerURLForSecurityApplicationGroupIdentifier: on macOS a URL of the expected form is always
/// returned, even if the group is invalid; whether the folder is there and can be entered is another matter.
ANSWER(-(NSURL *)containerURLForSecurityApplicationGroupIdentifier
       : (NSString *)group,
         [NSURL fileURLWithPath:@((homeFolder() + "/Library/Group Containers/" + utf8Of(group)).c_str())])
@end

/// A resolved URL holds its security scope only as long as it lives.
@interface ScopedUrl : NSURL
@end

@implementation ScopedUrl
- (void)dealloc
{
    --fakeMac().resolvedUrls;
    [super dealloc];
}
@end

@implementation NSURL (Bookmarks)
- (NSData *)bookmarkDataWithOptions:(NSURLBookmarkCreationOptions)options
     includingResourceValuesForKeys:(NSArray *)keys
                      relativeToURL:(NSURL *)base
                              error:(NSError **)error
{
    ask("create ", utf8Of([self path]), " options=", options, (keys || base ? " more" : ""));
    if (!fs::exists(utf8Of([self path]))) {
        *error = refusal();
        return nil;
    }
    return [[self path] dataUsingEncoding:NSUTF8StringEncoding];
}

+ (NSURL *)URLByResolvingBookmarkData:(NSData *)data
                              options:(NSURLBookmarkResolutionOptions)options
                        relativeToURL:(NSURL *)base
                  bookmarkDataIsStale:(BOOL *)stale
                                error:(NSError **)error
{
    ask("resolve options=", options, (base ? " more" : ""));
    NSString *path = [[[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding] autorelease];
    if (![path isAbsolutePath]) {
        *error = refusal();
        return nil;
    }
    *stale = fakeMac().staleBookmarks;
    ++fakeMac().resolvedUrls;
    return [[[ScopedUrl alloc] initFileURLWithPath:path] autorelease];
}

ANSWER(-(BOOL)startAccessingSecurityScopedResource, (ask("start ", utf8Of([self path])), !fakeMac().deniesAccess))
ANSWER(-(void)stopAccessingSecurityScopedResource, ask("stop ", utf8Of([self path])))
@end

// AppKit

/// The number of its process passes for an application; the first process has no identifier.
@implementation NSNumber (FakeApplication)
ANSWER(-(NSString *)bundleIdentifier, [self intValue] == 1 ? nil : @"com.example.foo")
ANSWER(-(pid_t)processIdentifier, [self intValue])
@end

@implementation NSRunningApplication (FakeMac)
ANSWER(+(id)runningApplicationWithProcessIdentifier
       : (pid_t)process, [fakeMac().runningApplications containsObject:@(process)] ? @(process) : nil)
@end

@implementation NSWorkspaceOpenConfiguration
ANSWER(+(NSWorkspaceOpenConfiguration *)configuration, [[[self alloc] init] autorelease])
SETTER(setActivates, BOOL, "activates=", int{value})
SETTER(setHides, BOOL, "hides=", int{value})
SETTER(setCreatesNewApplicationInstance, BOOL, "new=", int{value})
SETTER(setArguments, NSArray *, "arguments=", utf8Of([value componentsJoinedByString:@"|"]))
@end

@implementation NSWorkspace (FakeMac)
+ (NSWorkspace *)sharedWorkspace
{
    static NSWorkspace *shared = NSAllocateObject([NSWorkspace class], 0, nullptr); // -init asks a window server
    return shared;
}
ANSWER(-(NSArray *)runningApplications, fakeMac().runningApplications)
ANSWER(-(BOOL)openURL : (NSURL *)url, (ask("open ", utf8Of([url absoluteString])), [[url scheme] isEqualToString:@"x"]))
ANSWER(-(NSURL *)URLForApplicationWithBundleIdentifier
       : (NSString *)identifier,
         [@[ @"com.example.foo", @"" ] containsObject:identifier] ? [NSURL fileURLWithPath:@"/Some.app"] : nil)
- (void)openURL:(NSURL *)url configuration:(Configuration *)with completionHandler:(Completion)handler
{
    launch("open " + utf8Of([url absoluteString]), with, handler);
}
- (void)openURLs:(NSArray *)urls
    withApplicationAtURL:(NSURL *)application
           configuration:(Configuration *)with
       completionHandler:(Completion)handler
{
    launch("open " + utf8Of([urls componentsJoinedByString:@","]) + " with " + utf8Of([application path]), with,
           handler);
}
- (void)openApplicationAtURL:(NSURL *)url configuration:(Configuration *)with completionHandler:(Completion)handler
{
    launch("run " + utf8Of([url path]), with, handler);
}
@end

/// A panel and a screen, which need a window server otherwise, and a URL without a path.
@interface StandIn : NSObject
@end

@implementation StandIn
ANSWER(-(NSString *)path, nil)
ANSWER(-(NSRect)frame, NSMakeRect(7, 8, 1440, 900))
ANSWER(-(NSInteger)runModal, (ask("run"), fakeMac().panelResponse))
SETTER(setDirectoryURL, NSURL *, "panel in ", utf8Of([value path]))
SETTER(setPrompt, NSString *, "prompt=", utf8Of(value))
SETTER(setAllowsMultipleSelection, BOOL, "multiple=", int{value})
SETTER(setCanChooseDirectories, BOOL, "folders=", int{value})
SETTER(setCanChooseFiles, BOOL, "files=", int{value})
ANSWER(-(NSArray *)URLs,
       @[ self, [NSURL fileURLWithPath:@([@(fakeMac().panelPath.c_str()) fileSystemRepresentation])] ])
@end

@implementation NSOpenPanel (FakeMac)
ANSWER(+(NSOpenPanel *)openPanel, (id)[[[StandIn alloc] init] autorelease])
@end

@implementation NSScreen (FakeMac)
ANSWER(+(NSScreen *)mainScreen, (id)[[[StandIn alloc] init] autorelease])
@end

/// Without the window that GNUstep makes for each menu.
@interface FakeMenu : NSMenuItem
@end

@implementation FakeMenu
ANSWER(-(NSMenu *)submenu, (NSMenu *)self)
ANSWER(-(NSArray *)itemArray, [self representedObject])
ANSWER(-(id)mainMenu, self)
ANSWER(-(id)mainWindow, fakeMac().hasMainWindow ? [NSScreen mainScreen] : nil)
@end

NSMenuItem *test::menuItem(NSString *title, NSArray *submenu)
{
    NSMenuItem *item = [[[FakeMenu alloc] initWithTitle:title action:nullptr keyEquivalent:@""] autorelease];
    [item setRepresentedObject:submenu];
    return item;
}

// The C interfaces

extern "C" {

void NSAccessibilityPostNotificationWithUserInfo(id element, NSString *notification, NSDictionary *info)
{
    ask(utf8Of(notification), " ", utf8Of([info objectForKey:NSAccessibilityAnnouncementKey]),
        " priority=", [[info objectForKey:NSAccessibilityPriorityKey] intValue],
        element == NSApp ? " from the application" : " from the window");
}

int _NSGetExecutablePath(char *buffer, std::uint32_t *size)
{
    const std::string path = executable();
    if (*size <= path.size()) {
        *size = static_cast<std::uint32_t>(path.size()) + 1;
        return -1;
    }
    std::strcpy(buffer, path.c_str());
    return 0;
}

ANSWER(std::uint64_t mach_absolute_time(),
       fakeMac().ticks ? fakeMac().ticks
                       : static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()))
ANSWER(int mach_timebase_info(mach_timebase_info_data_t *info), (*info = {125, 3}, 0))
ANSWER(double CGEventSourceSecondsSinceLastEventType(CGEventSourceStateID state, CGEventType type),
       state == kCGEventSourceStateHIDSystemState && type == kCGAnyInputEventType ? 1.5 : 0.0)

SCNetworkReachabilityRef SCNetworkReachabilityCreateWithAddress(CFAllocatorRef, const sockaddr *address)
{
    const auto *internet = reinterpret_cast<const sockaddr_in *>(address);
    if (internet->sin_len != sizeof *internet || internet->sin_family != AF_INET || internet->sin_addr.s_addr != 0)
        return nullptr;
    ++fakeMac().reachabilityTargets;
    return reinterpret_cast<SCNetworkReachabilityRef>(&fakeMac());
}

ANSWER(Boolean SCNetworkReachabilityGetFlags(SCNetworkReachabilityRef, SCNetworkReachabilityFlags *flags),
       (*flags = fakeMac().reachability.value_or(2), fakeMac().reachability.has_value()))

ANSWER(void CFRelease(CFTypeRef), static_cast<void>(--fakeMac().reachabilityTargets))

} // extern "C"

#pragma GCC visibility pop
