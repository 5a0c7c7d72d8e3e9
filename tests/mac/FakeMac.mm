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
#include <sstream>
#include <thread>

using test::fakeMac;
using Completion = void (^)(NSRunningApplication *, NSError *);

namespace test {

FakeMac &fakeMac()
{
    static FakeMac mac;
    return mac;
}

} // namespace test

namespace {

/// Whether to answer. Leaves an object to the pool around the call, as the system's own calls do.
bool answers()
{
    [[[NSObject alloc] init] autorelease];
    return !fakeMac().answersNil;
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
    return fakeMac().executable.empty() ? std::filesystem::read_symlink("/proc/self/exe").string()
                                        : fakeMac().executable;
}

std::string homeFolder()
{
    const char *fixed = std::getenv("CFFIXED_USER_HOME");
    const char *home = std::getenv("HOME");
    return fixed ? fixed : home ? home : "/";
}

template <typename... Parts> void ask(const Parts &...parts)
{
    std::ostringstream call;
    (call << ... << parts);
    fakeMac().asked.push_back(call.str());
}

void launch(const std::string &what, NSWorkspaceOpenConfiguration *with, Completion completion)
{
    std::string arguments;
    for (NSString *argument in [with arguments])
        arguments += " [" + utf8Of(argument) + "]";
    ask(what, " hides=", int{[with hides]}, " activates=", int{[with activates]},
        " new=", int{[with createsNewApplicationInstance]}, arguments);
    Completion kept = Block_copy(completion);
    std::thread([kept] {
        @autoreleasepool {
            NSDictionary *info = @{NSLocalizedDescriptionKey : textOf(fakeMac().launchError)};
            if (fakeMac().launchError.empty())
                kept([NSRunningApplication runningApplicationWithProcessIdentifier:4711], nil);
            else
                kept(nil, [NSError errorWithDomain:NSCocoaErrorDomain code:1 userInfo:info]);
            Block_release(kept);
        }
    }).detach();
}

constexpr char kBookmark[] = "bookmark of ";

} // namespace

/// What the runtime and the class libraries keep for the life of the process.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions()
{
    return "leak:libobjc.so\nleak:libgnustep-base.so\nleak:libgnustep-gui.so\n";
}

// Foundation

/// As on macOS the environment names the user's home; GNUstep asks the user database.
extern "C" __attribute__((visibility("default"))) NSString *NSHomeDirectoryForUser(NSString *)
{
    return textOf(homeFolder());
}

extern "C" __attribute__((visibility("default"))) NSArray *NSSearchPathForDirectoriesInDomains(
    NSSearchPathDirectory directory, NSSearchPathDomainMask domain, BOOL expand)
{
    if (!answers())
        return nil;
    const bool support = directory == NSApplicationSupportDirectory && domain == NSUserDomainMask && expand;
    return @[ textOf(homeFolder() + "/Library/" + (support ? "Application Support" : "GNUstep")) ];
}

@implementation NSBundle (FakeMac)
+ (NSBundle *)mainBundle
{
    if (!answers())
        return nil;
    std::string path = fakeMac().mainBundle;
    if (path.empty()) {
        const std::string folder = executable().substr(0, executable().rfind('/'));
        const std::string tail = "/Contents/MacOS";
        const std::size_t stem = folder.size() - std::min(folder.size(), tail.size());
        path = folder.compare(stem, tail.size(), tail) == 0 ? folder.substr(0, stem) : folder;
    }
    return [NSBundle bundleWithPath:textOf(path)];
}

- (NSString *)executablePath
{
    return answers() ? textOf(executable()) : nil;
}

- (NSDictionary *)infoDictionary
{
    return
        [NSDictionary dictionaryWithContentsOfFile:[[self bundlePath] stringByAppendingString:@"/Contents/Info.plist"]];
}
@end

@implementation NSFileManager (GroupContainers)
- (NSURL *)containerURLForSecurityApplicationGroupIdentifier:(NSString *)group
{
    const auto known = fakeMac().groupContainers.find(utf8Of(group));
    return answers() && known != fakeMac().groupContainers.end() ? [NSURL fileURLWithPath:textOf(known->second)] : nil;
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
    if (!answers()) {
        *error = [NSError errorWithDomain:NSCocoaErrorDomain code:1 userInfo:@{NSLocalizedDescriptionKey : @"refused"}];
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
    if (!answers() || bytes.compare(0, std::strlen(kBookmark), kBookmark) != 0) {
        *error = [NSError errorWithDomain:NSCocoaErrorDomain code:1 userInfo:@{NSLocalizedDescriptionKey : @"refused"}];
        return nil;
    }
    *stale = fakeMac().staleBookmarks;
    return [NSURL fileURLWithPath:textOf(bytes.substr(std::strlen(kBookmark)))];
}

- (BOOL)startAccessingSecurityScopedResource
{
    answers();
    ask("start ", utf8Of([self path]));
    return !fakeMac().deniesAccess;
}

- (void)stopAccessingSecurityScopedResource
{
    answers();
    ask("stop ", utf8Of([self path]));
}
@end

// AppKit

@interface FakeApplication : NSRunningApplication {
    NSString *_identifier;
    pid_t _process;
}
@end

@implementation FakeApplication
+ (id)named:(const std::pair<std::string, int> &)what
{
    FakeApplication *application = [[[FakeApplication alloc] init] autorelease];
    application->_identifier = what.first.empty() ? nil : [textOf(what.first) retain];
    application->_process = what.second;
    return application;
}
- (void)dealloc
{
    [_identifier release];
    [super dealloc];
}
- (NSString *)bundleIdentifier
{
    return _identifier;
}
- (pid_t)processIdentifier
{
    return _process;
}
- (NSString *)description
{
    return [NSString stringWithFormat:@"application %@", [self bundleIdentifier]];
}
@end

@implementation NSRunningApplication (FakeMac)
+ (id)runningApplicationWithProcessIdentifier:(pid_t)pid
{
    for (const auto &application : fakeMac().runningApplications) {
        if (answers() && application.second == pid)
            return [FakeApplication named:application];
    }
    return nil;
}
@end

@implementation NSWorkspaceOpenConfiguration
@synthesize activates = _activates, hides = _hides, createsNewApplicationInstance = _createsNewApplicationInstance,
            arguments = _arguments;
+ (NSWorkspaceOpenConfiguration *)configuration
{
    return answers() ? [[[self alloc] init] autorelease] : nil;
}
- (void)dealloc
{
    [_arguments release];
    [super dealloc];
}
@end

@implementation NSWorkspace (FakeMac)
+ (NSWorkspace *)sharedWorkspace
{
    static NSWorkspace *shared = NSAllocateObject([NSWorkspace class], 0, nullptr); // -init asks a window server
    return answers() ? shared : nil;
}
- (NSArray *)runningApplications
{
    NSMutableArray *all = [NSMutableArray array];
    for (const auto &application : fakeMac().runningApplications)
        [all addObject:[FakeApplication named:application]];
    return all;
}
- (BOOL)openURL:(NSURL *)url
{
    ask("open ", utf8Of([url absoluteString]));
    return fakeMac().opensUrls;
}
@end

@implementation NSWorkspace (Launches)
- (NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)identifier
{
    for (const std::string &installed : fakeMac().installedApplications) {
        if (installed == utf8Of(identifier))
            return [NSURL fileURLWithPath:@"/Applications/Some.app"];
    }
    return nil;
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

/// A URL without a path.
@interface FakeBareUrl : NSObject
@end
@implementation FakeBareUrl
- (NSString *)path
{
    return nil;
}
@end

@interface FakePanel : NSObject {
    NSURL *_directoryURL;
    NSString *_prompt;
    BOOL _allowsMultipleSelection, _canChooseDirectories, _canChooseFiles;
}
@property (copy) NSURL *directoryURL;
@property (copy) NSString *prompt;
@property BOOL allowsMultipleSelection, canChooseDirectories, canChooseFiles;
@end

@implementation FakePanel
@synthesize directoryURL = _directoryURL, prompt = _prompt, allowsMultipleSelection = _allowsMultipleSelection,
            canChooseDirectories = _canChooseDirectories, canChooseFiles = _canChooseFiles;
- (id)init
{
    self = [super init];
    _allowsMultipleSelection = YES; // so that a test sees it being set
    return self;
}
- (void)dealloc
{
    [_directoryURL release];
    [_prompt release];
    [super dealloc];
}
- (NSInteger)runModal
{
    ask("panel ", utf8Of([_directoryURL path]), " prompt=", utf8Of(_prompt),
        " multiple=", int{_allowsMultipleSelection}, " folders=", int{_canChooseDirectories},
        " files=", int{_canChooseFiles});
    return fakeMac().panelResponse;
}
- (NSArray *)URLs
{
    NSMutableArray *urls = [NSMutableArray array];
    for (const std::string &path : fakeMac().panelUrls)
        [urls addObject:path.empty() ? [[[FakeBareUrl alloc] init] autorelease] : [NSURL fileURLWithPath:textOf(path)]];
    return urls;
}
@end

@implementation NSOpenPanel (FakeMac)
+ (NSOpenPanel *)openPanel
{
    return answers() ? [[[FakePanel alloc] init] autorelease] : nil;
}
@end

@interface FakeScreen : NSObject
@end
@implementation FakeScreen
- (NSRect)frame
{
    return NSMakeRect(7, 8, fakeMac().screen.width, fakeMac().screen.height);
}
@end

@implementation NSScreen (FakeMac)
+ (NSScreen *)mainScreen
{
    return answers() ? [[[FakeScreen alloc] init] autorelease] : nil;
}
@end

/// A menu without the window that GNUstep makes for each. It is the application object of the main menu, too.
@interface FakeMenu : NSObject {
    NSArray *_itemArray;
}
@property (retain) NSArray *itemArray;
@end

@implementation FakeMenu
@synthesize itemArray = _itemArray;
- (id)mainMenu
{
    return answers() ? self : nil;
}
- (id)mainWindow
{
    return answers() ? self : nil;
}
@end

@interface FakeMenuItem : NSMenuItem {
@public
    FakeMenu *menu;
}
@end

@implementation FakeMenuItem
- (NSMenu *)submenu
{
    return (NSMenu *)menu;
}
@end

namespace test {

void setMainMenu(const Lines &titles)
{
    @autoreleasepool {
        NSMutableArray *items = [NSMutableArray array];
        for (const std::string &title : titles)
            [items addObject:[[[FakeMenuItem alloc] initWithTitle:textOf(title) action:nullptr
                                                    keyEquivalent:@""] autorelease]];
        FakeMenuItem *top = [[[FakeMenuItem alloc] initWithTitle:@"Open" action:nullptr keyEquivalent:@""] autorelease];
        top->menu = [[FakeMenu alloc] init];
        [top->menu setItemArray:items];
        FakeMenu *menu = [[FakeMenu alloc] init];
        [menu setItemArray:@[ top ]];
        NSApp = (NSApplication *)menu;
    }
}

Lines mainMenuTitles()
{
    Lines titles;
    @autoreleasepool {
        for (NSMenuItem *top in [(FakeMenu *)NSApp itemArray]) {
            titles.push_back(utf8Of([top title]));
            for (NSMenuItem *item in [[top submenu] itemArray])
                titles.push_back(utf8Of([item title]));
        }
    }
    return titles;
}

} // namespace test

// The C interfaces

extern "C" {

__attribute__((visibility("default"))) void NSAccessibilityPostNotificationWithUserInfo(id element,
                                                                                        NSString *notification,
                                                                                        NSDictionary *info)
{
    const int priority = [[info objectForKey:NSAccessibilityPriorityKey] intValue];
    ask("announce " + utf8Of([info objectForKey:NSAccessibilityAnnouncementKey])
        + (element == NSApp ? "" : " elsewhere")
        + ([notification isEqualToString:NSAccessibilityAnnouncementRequestedNotification] ? "" : " otherwise")
        + " priority=" + std::to_string(priority));
}

int _NSGetExecutablePath(char *buffer, std::uint32_t *size)
{
    const std::string path = executable();
    if (fakeMac().answersNil)
        return -1;
    if (*size <= path.size()) {
        *size = static_cast<std::uint32_t>(path.size()) + 1;
        return -1;
    }
    std::strcpy(buffer, path.c_str());
    return 0;
}

std::uint64_t mach_absolute_time()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    return fakeMac().ticks ? fakeMac().ticks : static_cast<std::uint64_t>(now);
}

int mach_timebase_info(mach_timebase_info_data_t *info)
{
    *info = {125, fakeMac().timebaseDenominator};
    return fakeMac().answersNil ? 1 : 0;
}

double CGEventSourceSecondsSinceLastEventType(CGEventSourceStateID state, CGEventType type)
{
    answers();
    return state == kCGEventSourceStateHIDSystemState && type == kCGAnyInputEventType ? 1.5 : 0.0;
}

SCNetworkReachabilityRef SCNetworkReachabilityCreateWithAddress(CFAllocatorRef, const sockaddr *address)
{
    static const char target = 0;
    const auto *internet = reinterpret_cast<const sockaddr_in *>(address);
    if (!answers() || internet->sin_len != sizeof *internet || internet->sin_family != AF_INET
        || internet->sin_addr.s_addr != 0)
        return nullptr;
    ++fakeMac().reachabilityTargets;
    return reinterpret_cast<SCNetworkReachabilityRef>(&target);
}

Boolean SCNetworkReachabilityGetFlags(SCNetworkReachabilityRef, SCNetworkReachabilityFlags *flags)
{
    *flags = fakeMac().reachability;
    return !fakeMac().reachabilityUnknown;
}

void CFRelease(CFTypeRef object)
{
    if (!object)
        std::abort();
    --fakeMac().reachabilityTargets;
}

} // extern "C"
