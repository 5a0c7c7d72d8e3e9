#include "paths/MacUtilsOC.h"
#import "tests/mac/FakeMac.h"
#include "tests/support/Platform.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>
#include <future>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

using test::fakeMac;
using test::Lines;

using Bytes = std::vector<unsigned char>;

/// A name in the two normalisations.
constexpr char kName[] = "Ä.app", kDecomposed[] = "A\u0308.app";
constexpr char kNoText[] = "\xff/x";

/// A user with nothing but an application in an empty home.
struct Mac : testing::Test
{
    Mac()
    {
        ::setenv("CFFIXED_USER_HOME", m_dir.path().c_str(), 1);
        fs::create_directory(app());
        // As on a volume to which both are the same name.
        fs::create_directory_symlink(kName, m_dir / kDecomposed);
    }
    ~Mac() override
    {
        EXPECT_EQ(fakeMac().reachabilityTargets, 0);
        [m_pool drain];
    }

    [[nodiscard]] std::string app() const { return m_dir / kName; }
    static Lines asked() { return std::exchange(fakeMac().asked, {}); }

    NSAutoreleasePool *m_pool = [[NSAutoreleasePool alloc] init];
    test::TempDir m_dir;
};

/// What a launch ends with; nothing when there is no launch.
static std::optional<platform::LaunchOutcome> launched(const platform::LaunchRequest &request)
{
    const auto end = std::make_shared<std::promise<platform::LaunchOutcome>>();
    const bool started = platform::launch(request, [end](const auto &outcome) { end->set_value(outcome); });
    return started ? std::optional(end->get_future().get()) : std::nullopt;
}

/// In place of Qt's own: no program of this name is here.
bool QProcess::startDetached(qint64 *)
{
    fakeMac().asked.push_back((QStringList(program()) + arguments()).join('|').toStdString());
    return true;
}

// Rules that hold on every platform are tested on a fake one.

TEST_F(Mac, BundlesAnswerForThemselves)
{
    const std::string programs = app() + "/Contents/MacOS/", list = app() + "/Contents/Info.plist";
    fakeMac().executable = programs + "b";
    EXPECT_EQ(platform::bundleExecutablePath(), programs + "b") << "without a list";
    test::writeFile(programs + "main", "");
    test::writeFile(
        list,
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>ä</string>"
        "<key>CFBundleExecutable</key><string>main</string><key>Number</key><integer>1</integer></dict></plist>");
    EXPECT_EQ(platform::bundleExecutablePath(), programs + "b") << "not that of the list";
    EXPECT_EQ(platform::bundlePath(), app());
    EXPECT_EQ(platform::bundleIdentifier(), "ä");
    EXPECT_EQ(platform::bundleInfo(app(), "CFBundleIdentifier"), "ä");
    EXPECT_EQ(platform::propertyListInfo(list, "CFBundleIdentifier"), "ä");
    EXPECT_EQ(platform::bundleInfo("Number"), "") << "no text";
    EXPECT_EQ(platform::bundleInfo(kNoText), "");
    EXPECT_EQ(platform::bundleInfo(kNoText, "Number"), "");
    EXPECT_EQ(platform::propertyListInfo(kNoText, "Number"), "");
    EXPECT_EQ(platform::executablePath(), programs + "b");
    fakeMac().executable = programs + "/main";
    EXPECT_EQ(platform::bundleExecutablePath(), programs + "main") << "as the bundle has it";
    fakeMac().executable = std::string(3000, '/') + "b";
    EXPECT_EQ(platform::executablePath(), fakeMac().executable);
}

TEST_F(Mac, FoldersOfTheUserAreThoseOfTheSystem)
{
    ::setenv("CFFIXED_USER_HOME", "/Ä", 1);
    EXPECT_EQ(platform::applicationSupportDirectory(), "/A\u0308/Library/Application Support");
    EXPECT_EQ(platform::groupContainer("group.x"), "/Ä/Library/Group Containers/group.x");
    EXPECT_EQ(platform::groupContainer(kNoText), "");
    EXPECT_STREQ([getAppDirByMacOSSymLinkPath(@"/Ä/b/MacOS_SymLink/") UTF8String], "/Ä");
    EXPECT_FALSE(getAppDirByMacOSSymLinkPath(static_cast<NSString *>(nil)));
}

TEST_F(Mac, BookmarksKeepTheirOptionsAndScope)
{
    const Bytes data = platform::createBookmark(app(), 0).data;
    platform::ResolvedBookmark good = platform::resolveBookmark(data, 1024);
    ASSERT_EQ(fakeMac().resolvedUrls, 1) << "kept";
    EXPECT_TRUE(good.startAccess());
    good.stopAccess();
    EXPECT_EQ(asked(),
              (Lines{"create " + app() + " options=0", "resolve options=1024", "start " + app(), "stop " + app()}));
    EXPECT_FALSE(good.stale);
    fakeMac().staleBookmarks = fakeMac().deniesAccess = true;
    EXPECT_FALSE(good.startAccess());
    EXPECT_TRUE(platform::resolveBookmark(data, 0).stale);
    good = {};
    EXPECT_EQ(fakeMac().resolvedUrls, 0) << "given up";
    asked();
    for (const char *path : {kNoText, ""})
        EXPECT_EQ(platform::createBookmark(path, 0).data, Bytes()) << path;
    EXPECT_EQ(asked(), Lines{}) << "no path";
    EXPECT_EQ(platform::resolveBookmark({1, 2}, 0).error, "refused");
    EXPECT_EQ(platform::createBookmark("/none", 0).error, "refused") << "not the user's text";
}

TEST_F(Mac, DefaultsKeepBytesOnDiskAndPassOverOtherValues)
{
    const Bytes data{0, 255, '"'};
    platform::setUserDefaultsData("vant ä", data);
    [[NSUserDefaults standardUserDefaults] setObject:@"text" forKey:@"vant text"];
    EXPECT_EQ(platform::userDefaultsData("vant ä"), data);
    EXPECT_FALSE(platform::userDefaultsData("vant text"));
    EXPECT_FALSE(platform::userDefaultsData(kNoText));
    platform::setUserDefaultsData(kNoText, data);
    platform::setUserDefaultsData("vant empty", {});
    EXPECT_EQ(platform::userDefaultsWithPrefix("vant "),
              (std::map<std::string, Bytes>{{"vant ä", data}, {"vant empty", {}}}));
    platform::synchroniseUserDefaults();
    EXPECT_NE(test::readFile(m_dir / "GNUstep/Defaults/mac_tests.plist").find("vant empty"), std::string::npos);
}

TEST_F(Mac, LaunchesAreAskedForAsTheyStand)
{
    const std::pair<platform::LaunchRequest, Lines> rows[] = {
        // address, application, hides, activates, a new instance, arguments
        {{"x:a%20b", "", true, false, true, {}}, {"hides=1", "activates=0", "new=1", "arguments=", "open x:a%20b"}},
        {{"x:y", app(), false, true, false, {}},
         {"hides=0", "activates=1", "new=0", "arguments=", "open x:y with " + app()}},
        {{"", app(), false, true, false, {"", "a b", "ü"}},
         {"hides=0", "activates=1", "new=0", "arguments=|a b|ü", "run " + app()}},
        {{"", app(), false, true, false, {kNoText}}, {}},
        {{}, {}}, // nothing to launch
        {{kNoText, app(), false, true, false, {}}, {}}, // not the application without its address
    };
    for (const auto &[request, calls] : rows) {
        const auto outcome = launched(request);
        EXPECT_EQ(asked(), calls);
        ASSERT_NE(outcome.has_value(), calls.empty());
        EXPECT_EQ(outcome ? outcome->processId : 4711, 4711);
        EXPECT_EQ(outcome ? outcome->description : "4711", "4711");
    }
    fakeMac().launchFails = true;
    const auto failure = launched(rows[0].first);
    EXPECT_FALSE(failure->launched);
    EXPECT_EQ(failure->description, "refused");

    asked();
    EXPECT_TRUE(platform::openUrl("x:a"));
    EXPECT_EQ(asked(), Lines{"open x:a"});
    for (const char *url : {"unknown:a", "", kNoText})
        EXPECT_FALSE(platform::openUrl(url)) << url;
    asked();
    EXPECT_TRUE(platform::revealFile("-a b"));
    EXPECT_EQ(asked(), Lines{"/usr/bin/open|-R|-a b"});
}

TEST_F(Mac, PanelIsSetAsAskedFor)
{
    int none = 0;
    const QCoreApplication application(none, nullptr);
    QTimer::singleShot(0, [] { fakeMac().asked.push_back("end of a dialog"); });
    fakeMac().panelPath = app();
    EXPECT_EQ(platform::runOpenPanel({app(), true, "授予"}), Lines{app()});
    EXPECT_EQ(
        asked(),
        (Lines{"panel in " + app(), "multiple=0", "folders=1", "files=0", "prompt=授予", "end of a dialog", "run"}));
    EXPECT_EQ(platform::runOpenPanel({}), Lines{m_dir / kDecomposed});
    EXPECT_EQ(asked(), (Lines{"multiple=0", "folders=1", "files=1", "run"}));
    for (const std::string &another : {m_dir.path().string(), app() + "/"})
        EXPECT_EQ(platform::runOpenPanel({another, false, kNoText}), Lines{m_dir / kDecomposed}) << another;
    EXPECT_FALSE(platform::runOpenPanel({kNoText, false, ""}));
    for (const NSInteger response : {0, -1000, 2}) { // cancel, stop, and what may come
        fakeMac().panelResponse = response;
        EXPECT_FALSE(platform::runOpenPanel({})) << response;
    }
}

TEST_F(Mac, ApplicationsAreFoundByTheirIdentifiers)
{
    const pid_t ended = ::fork();
    if (ended == 0)
        ::_exit(0);
    ASSERT_EQ(::waitpid(ended, nullptr, 0), ended);
    fakeMac().runningApplications = @[ @1, @(ended), @(::getpid()) ];
    EXPECT_TRUE(IsProcessRunningOC(@"com.example.foo"));
    EXPECT_FALSE(IsProcessRunningOC(@"com.Example.foo"));
    EXPECT_FALSE(IsProcessRunningOC(static_cast<NSString *>(nil)));
    EXPECT_TRUE(platform::isApplicationInstalled("com.example.foo"));
    for (const std::string &id : {std::string(), std::string("com.example.foo\0", 16), std::string(kNoText)}) {
        EXPECT_FALSE(platform::isApplicationInstalled(id)) << id;
        EXPECT_FALSE(platform::isApplicationRunning(id)) << id;
    }
    EXPECT_TRUE(platform::isProcessRunning(::getpid()));
    EXPECT_TRUE(platform::isProcessRunning(1)) << "of another user, unless root tests";
    EXPECT_FALSE(platform::isProcessRunning(::getppid())) << "no application";
    // NSWorkspace, runningApplications: changes only when the main run loop runs in a common mode.
    EXPECT_FALSE(platform::isProcessRunning(ended)) << "before the run loop has told";
}

TEST_F(Mac, SystemAnswers)
{
    EXPECT_EQ(platform::mainScreenSize(), (std::pair{1440.0, 900.0})) << "not where it stands";
    EXPECT_EQ(platform::secondsSinceLastInput(), 1.5);
    for (const std::uint32_t flags : {2U, 3U, 4U}) {
        fakeMac().reachability = flags;
        EXPECT_EQ(platform::zeroAddressReachability()->reachable, flags != 4) << flags;
        EXPECT_EQ(platform::zeroAddressReachability()->connectionRequired, flags == 4) << flags;
    }
    fakeMac().reachability.reset();
    EXPECT_FALSE(platform::zeroAddressReachability());
    fakeMac().ticks = 24'000'000;
    EXPECT_EQ(platform::monotonicNanoseconds(), 1'000'000'000U);
    test::writeFile(m_dir / "sysctl", "#!/bin/sh\ntest \"$*\" = '-n kern.sysv.shmmax' && echo 42\n");
    fs::permissions(m_dir / "sysctl", fs::perms::owner_all);
    ::setenv("PATH", m_dir.path().c_str(), 1);
    EXPECT_EQ(platform::sharedMemorySize(), 42U);

    testing::internal::CaptureStderr();
    platform::systemLog("grün %@");
    platform::systemLog(kNoText);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("grün %@"), std::string::npos) << log;
    EXPECT_NE(log.find("ÿ/x"), std::string::npos) << log;
}

TEST_F(Mac, MenuTitlesAndAnnouncementsNeedAnApplication)
{
    const auto retitle = [](const QString &title) {
        return title == "Open" ? std::optional("Ö" + title) : std::nullopt;
    };
    platform::retitleSubmenuItems(retitle);
    platform::announce(nullptr, "x");
    EXPECT_EQ(asked(), Lines{});
    NSMenuItem *open = test::menuItem(@"Open", nil), *close = test::menuItem(@"Close", nil);
    NSMenuItem *top = test::menuItem(@"Open", @[ open, close ]);
    NSApp = (NSApplication *)test::menuItem(@"", @[ top ]);
    platform::retitleSubmenuItems(retitle);
    EXPECT_STREQ([[top title] UTF8String], "Open") << "in submenus only";
    EXPECT_STREQ([[open title] UTF8String], "ÖOpen");
    EXPECT_STREQ([[close title] UTF8String], "Close");

    for (const bool hasWindow : {false, true}) {
        fakeMac().hasMainWindow = hasWindow;
        platform::announce(nullptr, QString(QChar(u'\0')));
        platform::announce(nullptr, "Größe");
    }
    const std::string call =
        std::string([NSAccessibilityAnnouncementRequestedNotification UTF8String]) + " Größe priority=90 from the ";
    EXPECT_EQ(asked(), (Lines{call + "application", call + "window"}));
    NSApp = nil;
}
