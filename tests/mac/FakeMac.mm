#import "tests/mac/FakeMac.h"

#include <CoreGraphics/CoreGraphics.h>
#include <SystemConfiguration/SystemConfiguration.h>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mach-o/dyld.h>
#include <mach/mach_time.h>
#include <netinet/in.h>
#include <optional>
#include <sstream>
#include <strings.h>
#include <thread>

namespace fs = std::filesystem;

using test::fakeMac;
using test::Lines;
using Completion = void (^)(NSRunningApplication *, NSError *);

namespace {

/// NSWorkspace, runningApplications: changes only when the main run loop runs in a common mode.
const test::Applications &toldApplications()
{
    std::optional<test::Applications> &told = fakeMac().told;
    return told ? *told : told.emplace(fakeMac().runningApplications);
}

NSString *textOf(const std::string &utf8)
{
    return [NSString stringWithUTF8String:utf8.c_str()];
}

std::string utf8Of(NSString *text)
{
    return text ? [text UTF8String] : "nil";
}

std::string executable()
{
    return fakeMac().executable.empty() ? fs::read_symlink("/proc/self/exe").string() : fakeMac().executable;
}

std::string homeFolder()
{
    const char *fixed = std::getenv("CFFIXED_USER_HOME");
    const char *home = std::getenv("HOME");
    return fixed ? fixed : home ? home : "/";
}

NSError *errorOf(const std::string &text)
{
    NSDictionary *info = @{NSLocalizedDescriptionKey : @"For the user.", @"what" : textOf(text)};
    return [NSError errorWithDomain:NSCocoaErrorDomain code:1 userInfo:info];
}

template <typename... Parts> void ask(const Parts &...parts)
{
    std::ostringstream call;
    (call << ... << parts);
    fakeMac().asked.push_back(call.str());
}

void launch(const std::string &what, NSWorkspaceOpenConfiguration *with, Completion completion)
{
    ask(what, with ? "" : " unconfigured");
    Completion kept = Block_copy(completion);
    std::thread([kept] {
        @autoreleasepool {
            if (fakeMac().launchError.empty())
                kept([NSRunningApplication runningApplicationWithProcessIdentifier:4711], nil);
            else
                kept(nil, errorOf(fakeMac().launchError));
            Block_release(kept);
        }
    }).detach();
}

constexpr char kBookmark[] = "bookmark of ";

} // namespace

namespace test {

FakeMac &fakeMac()
{
    static FakeMac mac;
    return mac;
}

} // namespace test

// A method that answers what an expression is worth, and one that says what it was set to.
#define ANSWER(method, ...)                                                                                            \
    method                                                                                                             \
    {                                                                                                                  \
        return __VA_ARGS__;                                                                                            \
    }
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

/// NSError, description: the domain, the code and what is known; the localized description is for users.
@implementation NSError (FakeMac)
ANSWER(-(NSString *)description,
       [NSString stringWithFormat:@"Error Domain=%@ Code=%ld %@", [self domain], (long)[self code], [self userInfo]])
@end

/// As on macOS the environment names the user's home; GNUstep asks the user database.
ANSWER(extern "C" NSString *NSHomeDirectoryForUser(NSString *), textOf(homeFolder()))

/// "NSSearchPathForDirectoriesInDomains": a list, in the order in which to look.
extern "C" NSArray *NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory, NSSearchPathDomainMask domain,
                                                        BOOL expand)
{
    const bool support = directory == NSApplicationSupportDirectory && domain == NSUserDomainMask && expand;
    return @[ textOf(homeFolder() + "/Library/" + (support ? "Application Support" : "GNUstep")), @"/Network/Library" ];
}

@implementation NSBundle (FakeMac)
+ (NSBundle *)mainBundle
{
    fs::path path = fs::path(executable()).parent_path();
    if (path.parent_path().filename() / path.filename() == "Contents/MacOS")
        path = path.parent_path().parent_path();
    return [NSBundle bundleWithPath:textOf(path)];
}

/// CFBundleExecutable, and Core Foundation's published CFBundle_Executable.c: Contents/MacOS/ and the name in the list,
/// or else the bundle's, whoever runs; nil where no such file is. A program outside a bundle is its own.
- (NSString *)executablePath
{
    const fs::path bundle = utf8Of([self bundlePath]);
    if (!fs::exists(bundle / "Contents"))
        return textOf(executable());
    NSString *named = [[self infoDictionary] objectForKey:@"CFBundleExecutable"];
    const fs::path program = bundle / "Contents/MacOS" / (named ? fs::path(utf8Of(named)) : bundle.stem());
    return fs::exists(program) ? textOf(program) : nil;
}
ANSWER(-(NSDictionary *)infoDictionary,
       [NSDictionary dictionaryWithContentsOfFile:[[self bundlePath] stringByAppendingString:@"/Contents/Info.plist"]])
@end

@implementation NSFileManager (GroupContainers)
/// NSFileManager, containerURLForSecurityApplicationGroupIdentifier: on macOS a URL of the expected form is always
/// returned, even if the group is invalid; whether the folder is there and can be entered is another matter.
- (NSURL *)containerURLForSecurityApplicationGroupIdentifier:(NSString *)group
{
    const std::string folder = homeFolder() + "/Library/Group Containers/" + utf8Of(group);
    std::error_code error;
    if (fakeMac().ownsGroups)
        fs::create_directories(folder, error);
    return [NSURL fileURLWithPath:textOf(folder)];
}
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
    const std::string path = utf8Of([self path]);
    ask("create ", path, " options=", options, (keys || base ? " more" : ""));
    if (!fakeMac().createsBookmarks) {
        *error = errorOf("refused");
        return nil;
    }
    const std::string data = kBookmark + path;
    return [NSData dataWithBytes:data.data() length:data.size()];
}

+ (NSURL *)URLByResolvingBookmarkData:(NSData *)data
                              options:(NSURLBookmarkResolutionOptions)options
                        relativeToURL:(NSURL *)base
                  bookmarkDataIsStale:(BOOL *)stale
                                error:(NSError **)error
{
    ask("resolve options=", options, (base ? " more" : ""));
    const std::string bytes(static_cast<const char *>([data bytes]), [data length]);
    if (bytes.compare(0, std::strlen(kBookmark), kBookmark) != 0) {
        *error = errorOf("refused");
        return nil;
    }
    *stale = fakeMac().staleBookmarks;
    ++fakeMac().resolvedUrls;
    return [[[ScopedUrl alloc] initFileURLWithPath:textOf(bytes.substr(std::strlen(kBookmark)))] autorelease];
}

ANSWER(-(BOOL)startAccessingSecurityScopedResource, (ask("start ", utf8Of([self path])), !fakeMac().deniesAccess))
ANSWER(-(void)stopAccessingSecurityScopedResource, ask("stop ", utf8Of([self path])))
@end

// AppKit

@interface FakeApplication : NSRunningApplication {
    const std::pair<std::string, int> *_what;
}
@end

@implementation FakeApplication
+ (id)of:(const std::pair<std::string, int> &)what
{
    FakeApplication *application = [[[FakeApplication alloc] init] autorelease];
    application->_what = &what;
    return application;
}
ANSWER(-(NSString *)bundleIdentifier, _what->first.empty() ? nil : textOf(_what->first))
ANSWER(-(pid_t)processIdentifier, _what->second)
ANSWER(-(NSString *)description, [NSString stringWithFormat:@"application %@", [self bundleIdentifier]])
@end

@implementation NSRunningApplication (FakeMac)
+ (id)runningApplicationWithProcessIdentifier:(pid_t)pid
{
    for (const auto &application : toldApplications()) {
        if (application.second == pid)
            return [FakeApplication of:application];
    }
    return nil;
}
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
- (NSArray *)runningApplications
{
    NSMutableArray *all = [NSMutableArray array];
    for (const auto &application : toldApplications())
        [all addObject:[FakeApplication of:application]];
    return all;
}
ANSWER(-(BOOL)openURL : (NSURL *)url, (ask("open ", utf8Of([url absoluteString])), fakeMac().opensUrls))
- (NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)identifier
{
    const Lines &all = fakeMac().installedApplications;
    // CFBundleIdentifier: identifiers are case-insensitive, as installed.
    const bool isThere = std::any_of(all.begin(), all.end(), [&](const std::string &one) {
        return ::strcasecmp(one.c_str(), [identifier UTF8String]) == 0;
    });
    return isThere ? [NSURL fileURLWithPath:@"/Applications/Some.app"] : nil;
}
- (void)openURL:(NSURL *)url
        configuration:(NSWorkspaceOpenConfiguration *)configuration
    completionHandler:(Completion)handler
{
    launch("open " + utf8Of([url absoluteString]), configuration, handler);
}
- (void)openURLs:(NSArray *)urls
    withApplicationAtURL:(NSURL *)application
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(Completion)handler
{
    const std::string all = utf8Of([[urls valueForKey:@"absoluteString"] componentsJoinedByString:@","]);
    launch("open " + all + " with " + utf8Of([application path]), configuration, handler);
}
- (void)openApplicationAtURL:(NSURL *)application
               configuration:(NSWorkspaceOpenConfiguration *)configuration
           completionHandler:(Completion)handler
{
    launch("run " + utf8Of([application path]), configuration, handler);
}
@end

/// A panel and a screen, which need a window server otherwise, and a URL without a path.
@interface StandIn : NSObject
@end

@implementation StandIn
ANSWER(-(NSString *)path, nil)
ANSWER(-(NSRect)frame, NSMakeRect(7, 8, fakeMac().screen.width, fakeMac().screen.height))
ANSWER(-(NSInteger)runModal, (ask("run"), fakeMac().panelResponse))
SETTER(setDirectoryURL, NSURL *, "panel in ", utf8Of([value path]))
SETTER(setPrompt, NSString *, "prompt=", utf8Of(value))
SETTER(setAllowsMultipleSelection, BOOL, "multiple=", int{value})
SETTER(setCanChooseDirectories, BOOL, "folders=", int{value})
SETTER(setCanChooseFiles, BOOL, "files=", int{value})
- (NSArray *)URLs
{
    NSMutableArray *urls = [NSMutableArray array];
    for (const std::string &path : fakeMac().panelUrls)
        [urls addObject:path.empty() ? [[[StandIn alloc] init] autorelease]
                                     : [NSURL fileURLWithPath:textOf([textOf(path) fileSystemRepresentation])]];
    return urls;
}
@end

@implementation NSOpenPanel (FakeMac)
ANSWER(+(NSOpenPanel *)openPanel, (id)[[[StandIn alloc] init] autorelease])
@end

@implementation NSScreen (FakeMac)
ANSWER(+(NSScreen *)mainScreen, (id)[[[StandIn alloc] init] autorelease])
@end

/// A menu item that is its own submenu, without the window that GNUstep makes for each; and the application around it.
@interface FakeMenu : NSMenuItem
@end

@implementation FakeMenu
+ (id)named:(NSString *)title with:(NSArray *)items
{
    FakeMenu *menu = [[[FakeMenu alloc] initWithTitle:title action:nullptr keyEquivalent:@""] autorelease];
    [menu setRepresentedObject:items];
    return menu;
}
ANSWER(-(NSMenu *)submenu, (NSMenu *)self)
ANSWER(-(NSArray *)itemArray, [self representedObject])
ANSWER(-(id)mainMenu, self)
ANSWER(-(id)mainWindow, fakeMac().hasMainWindow ? [NSScreen mainScreen] : nil)
@end

namespace test {

void setMainMenu(const Lines &titles)
{
    @autoreleasepool {
        NSMutableArray *items = [NSMutableArray array];
        for (const std::string &title : titles)
            [items addObject:[FakeMenu named:textOf(title) with:nil]];
        NSApp = (NSApplication *)[[FakeMenu named:@"" with:@[ [FakeMenu named:@"Open" with:items] ]] retain];
    }
}

Lines mainMenuTitles()
{
    Lines titles;
    @autoreleasepool {
        for (NSMenuItem *top in [(FakeMenu *)NSApp itemArray]) {
            for (NSMenuItem *item in [@[ top ] arrayByAddingObjectsFromArray:[[top submenu] itemArray]])
                titles.push_back(utf8Of([item title]));
        }
    }
    return titles;
}

} // namespace test

// The C interfaces

extern "C" {

void NSAccessibilityPostNotificationWithUserInfo(id element, NSString *notification, NSDictionary *info)
{
    const int priority = [[info objectForKey:NSAccessibilityPriorityKey] intValue];
    ask("announce " + utf8Of([info objectForKey:NSAccessibilityAnnouncementKey])
        + (!element               ? " nowhere"
               : element == NSApp ? " from the application"
                                  : " from the window")
        + ([notification isEqualToString:NSAccessibilityAnnouncementRequestedNotification] ? "" : " otherwise")
        + " priority=" + std::to_string(priority));
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
ANSWER(int mach_timebase_info(mach_timebase_info_data_t *info), (*info = {125, fakeMac().timebaseDenominator}, 0))
ANSWER(double CGEventSourceSecondsSinceLastEventType(CGEventSourceStateID state, CGEventType type),
       state == kCGEventSourceStateHIDSystemState && type == kCGAnyInputEventType ? 1.5 : 0.0)

SCNetworkReachabilityRef SCNetworkReachabilityCreateWithAddress(CFAllocatorRef, const sockaddr *address)
{
    static const char target = 0;
    const auto *internet = reinterpret_cast<const sockaddr_in *>(address);
    if (internet->sin_len != sizeof *internet || internet->sin_family != AF_INET || internet->sin_addr.s_addr != 0)
        return nullptr;
    ++fakeMac().reachabilityTargets;
    return reinterpret_cast<SCNetworkReachabilityRef>(&target);
}

ANSWER(Boolean SCNetworkReachabilityGetFlags(SCNetworkReachabilityRef, SCNetworkReachabilityFlags *flags),
       (*flags = fakeMac().reachability, !fakeMac().reachabilityUnknown))

void CFRelease(CFTypeRef object)
{
    if (!object)
        std::abort();
    --fakeMac().reachabilityTargets;
}

} // extern "C"

#pragma GCC visibility pop
