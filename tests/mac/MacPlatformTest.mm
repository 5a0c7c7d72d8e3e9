#include "paths/MacBookmark.h"
#include "paths/MacPath.h"
#include "paths/MacSandbox.h"
#include "paths/MacUtils.h"
#include "paths/MacUtilsOC.h"
#include "paths/platform/Announcement_p.h"
#include "paths/platform/Applications_p.h"
#include "paths/platform/Bookmark_p.h"
#include "paths/platform/Bundle_p.h"
#include "paths/platform/Clock_p.h"
#include "paths/platform/FileManager_p.h"
#include "paths/platform/Idle_p.h"
#include "paths/platform/OpenPanel_p.h"
#include "paths/platform/Reachability_p.h"
#include "paths/platform/SystemLog_p.h"
#include "paths/platform/System_p.h"
#include "paths/platform/UserDefaults_p.h"
#include "paths/platform/UserDirectories_p.h"
#include "paths/platform/Workspace_p.h"
#import "tests/mac/FakeMac.h"
#include "tests/support/Eventually.h"
#include "tests/support/TestFiles.h"

#include <functional>
#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <utility>

namespace fs = std::filesystem;

using test::fakeMac;
using test::Lines;

namespace {

using Bytes = std::vector<unsigned char>;

constexpr char kNoText[] = "\xff/x";

std::string plist(const std::string &version)
{
    return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>CFBundleName</key><string>Länge</string>"
           "<key>CFBundleIdentifier</key><string>com.example.foo</string><key>Number</key><integer>1</integer>"
           "<key>CFBundleShortVersionString</key><string>"
        + version + "</string></dict></plist>";
}

/// A user with an empty home, and a helper that runs deep inside an application.
class Mac : public testing::Test
{
protected:
    Mac()
    {
        for (const char *name : {"HOME", "CFFIXED_USER_HOME"})
            ::setenv(name, m_dir.path().c_str(), 1);
        test::writeFile(app() + "/Contents/Info.plist", plist("1.2.3"));
        test::writeFile(m_helper + "/Contents/Info.plist", plist("4.5.6"));
        fakeMac().executable = m_helper + "/Contents/MacOS/b";
        fakeMac().groupContainers["group.x"] = m_dir / "group";
    }
    ~Mac() override
    {
        EXPECT_EQ(fakeMac().reachabilityTargets, 0);
        [m_pool drain];
    }

    [[nodiscard]] std::string app() const { return m_dir / "Ä.app"; }
    static Lines asked() { return std::exchange(fakeMac().asked, {}); }

    NSAutoreleasePool *m_pool = [[NSAutoreleasePool alloc] init];
    test::TempDir m_dir;
    const std::string m_helper = app() + "/Contents/Helpers/B.app";
};

/// What the system log receives meanwhile.
template <typename Call> std::string logOf(Call call)
{
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

/// The process that a launch reports, on another thread; nothing when there is no launch.
template <typename Launcher> std::optional<int> launched(Launcher launcher, const MacSandbox::LaunchParams &params)
{
    const auto outcome = std::make_shared<std::promise<int>>();
    const auto report = [outcome, caller = std::this_thread::get_id()](int pid) {
        EXPECT_NE(std::this_thread::get_id(), caller);
        outcome->set_value(pid);
    };
    return launcher(params, report) ? std::optional(outcome->get_future().get()) : std::nullopt;
}

} // namespace

TEST_F(Mac, EveryCallAnswersOrSaysSoAndLeavesNothingInThePoolAroundIt)
{
    fakeMac().mainBundle = app();
    fakeMac().runningApplications = {{"", 1}, {"com.example.foo", 4711}};
    fakeMac().installedApplications = {"com.example.foo"};
    fakeMac().panelUrls = {app()};
    test::setMainMenu({"Open"});
    platform::setUserDefaultsData("kept", {1});
    const Bytes bookmark = platform::createBookmark(app(), 0).data;
    const bool &none = fakeMac().answersNil;
    Lines chosen;
    const MacSandbox::LaunchParams url{"", "x:y", {}, true, false};
    const std::pair<const char *, std::function<bool()>> calls[] = {
        {"executable", [] { return platform::executablePath().has_value(); }},
        {"executable of the bundle", [] { return !MacPath::getAppFullPath().empty(); }},
        {"bundle", [] { return !platform::bundlePath().empty(); }},
        {"identifier", [] { return !MacUtils::GetOrgName().empty(); }},
        {"information", [] { return !MacUtils::GetAppName().empty(); }},
        {"information elsewhere",
         [&] { return !platform::bundleInfo(none ? "/none" : app(), "CFBundleName").empty(); }},
        {"property list", [] { return !MacUtils::GetMainBundleVersionString().empty(); }},
        {"support folder", [] { return !MacPath::getUserDirPath().empty(); }},
        {"group container", [] { return !platform::groupContainer("group.x").empty(); }},
        {"default", [&] { return platform::userDefaultsData(none ? "none" : "kept").has_value(); }},
        {"defaults", [&] { return !platform::userDefaultsWithPrefix(none ? "none" : "ke").empty(); }},
        {"storing a default",
         [&] {
             platform::setUserDefaultsData(none ? kNoText : "new", {1});
             platform::synchroniseUserDefaults();
             return platform::userDefaultsWithPrefix(none ? kNoText : "new").size() == 1;
         }},
        {"new bookmark", [&] { return !platform::createBookmark(app(), 0).data.empty(); }},
        {"bookmark", [&] { return platform::resolveBookmark(bookmark, 0).startAccess != nullptr; }},
        {"access",
         [&] {
             fakeMac().answersNil = false;
             const platform::ResolvedBookmark resolved = platform::resolveBookmark(bookmark, 0);
             resolved.stopAccess();
             return resolved.startAccess();
         }},
        {"installed", [] { return platform::isApplicationInstalled("com.example.foo"); }},
        {"running", [] { return MacUtils::IsProcessRunning("com.example.foo"); }},
        {"process", [] { return MacSandbox::isRunning(4711); }},
        {"opening", [] { return extendRequestAuthorization(); }},
        {"launch", [&] { return launched(MacSandbox::openURL, url) == 4711; }},
        {"panel", [&] { return MacSandbox::openNSFilePanel("/a", true, "b", chosen); }},
        {"menu",
         [] {
             const Lines before = test::mainMenuTitles();
             updateMacOSMenuTitles({{"Open", "Shut"}, {"Shut", "Open"}});
             return test::mainMenuTitles() != before;
         }},
        {"system log",
         [&] {
             platform::systemLog(none ? kNoText : "text");
             return !none;
         }},
        {"screen", [] { return MacUtils::GetMainScreenSize().first > 0; }},
        {"reachability", [] { return MacUtils::checkNetworkAvailable(); }},
        {"idle", [&] { return isMainThreadIdle() && !none; }},
    };
    for (const auto &[name, answered] : calls) {
        for (const bool answersNil : {false, true}) {
            NSAutoreleasePool *around = [[NSAutoreleasePool alloc] init];
            fakeMac().answersNil = answersNil;
            EXPECT_EQ(answered(), !fakeMac().answersNil) << name << (answersNil ? ", nil" : "");
            EXPECT_EQ([around autoreleaseCount], 0U) << name;
            [around drain];
        }
    }
}

TEST_F(Mac, BundlesAnswerForThemselvesAndForTheirOwners)
{
    EXPECT_EQ(MacPath::getAppFullPath(), m_helper + "/Contents/MacOS/b");
    EXPECT_EQ(MacPath::getUserDirPath(), m_dir / "Library/Application Support");
    EXPECT_EQ(platform::bundlePath(), m_helper);
    EXPECT_EQ(MacUtils::GetOrgName(), "com.example.foo");
    EXPECT_EQ(MacUtils::GetBundleVersionString(), "4.5.6");
    EXPECT_EQ(MacUtils::GetMainBundleVersionString(), "1.2.3");
    EXPECT_EQ(platform::bundleInfo("Number"), "") << "no text";
    EXPECT_EQ(platform::bundleInfo(kNoText), "");
    EXPECT_EQ(platform::bundleInfo(kNoText, "CFBundleName"), "");
    EXPECT_EQ(platform::propertyListInfo(kNoText, "CFBundleName"), "");

    fs::create_directory(app() + "/Contents/MacOS_SymLink");
    fakeMac().mainBundle = app() + "/Contents/MacOS_SymLink";
    EXPECT_EQ(MacUtils::GetAppName(), "Länge");
    EXPECT_EQ(MacUtils::GetBundleVersionString(), "1.2.3");
    EXPECT_STREQ([getAppDirByMacOSSymLinkPath(@"/Ä/b/MacOS_SymLink/") UTF8String], "/Ä");
    EXPECT_FALSE(getAppDirByMacOSSymLinkPath(@"/a/b/MacOS"));
    EXPECT_FALSE(getAppDirByMacOSSymLinkPath(static_cast<NSString *>(nil)));

    for (const std::string &path : {m_helper, std::string(3000, '/') + "b"}) {
        fakeMac().executable = path;
        EXPECT_EQ(platform::executablePath(), path);
    }
}

TEST_F(Mac, BookmarksKeepTheirOptionsAndAreOnDiskAtOnce)
{
    const std::string file = app() + "/Contents/Info.plist";
    const std::string folder = app() + "/Contents";
    ASSERT_TRUE(MacBookmark::createBookmark(file));
    EXPECT_EQ(asked(), (Lines{"create " + folder + " options=2048", "create " + file + " options=2048"}));
    const std::string stored = test::readFile(m_dir / "GNUstep/Defaults/mac_tests.plist");
    EXPECT_NE(stored.find("Info.plist"), std::string::npos);

    EXPECT_TRUE(MacBookmark::openBookmark(file));
    EXPECT_TRUE(MacBookmark::closeBookmark(folder));
    EXPECT_EQ(asked(), (Lines{"resolve options=1024", "start " + file, "resolve options=1024", "stop " + folder}));
    fakeMac().deniesAccess = true;
    EXPECT_FALSE(MacBookmark::openBookmark(file));
    fakeMac().staleBookmarks = true;
    asked();
    EXPECT_FALSE(MacBookmark::openBookmark(file));
    EXPECT_EQ(asked(), Lines{"resolve options=1024"});

    EXPECT_TRUE(MacBookmark::openSharedBookmark(MacBookmark::createSharedBookmark(app())));
    EXPECT_EQ(asked(), (Lines{"create " + app() + " options=0", "resolve options=0"}));
    EXPECT_TRUE(MacBookmark::createSharedBookmark(kNoText).empty() && platform::createBookmark("", 0).data.empty());
    EXPECT_EQ(asked(), Lines{}) << "no path";
    EXPECT_NE(platform::resolveBookmark({1, 2}, 0).error.find("refused"), std::string::npos);
    fakeMac().answersNil = true;
    EXPECT_NE(platform::createBookmark(app(), 0).error.find("refused"), std::string::npos);
}

TEST_F(Mac, DefaultsKeepBytesAndPassOverOtherValues)
{
    const Bytes data{0, 255, '"'};
    platform::setUserDefaultsData("vant ä", data);
    [[NSUserDefaults standardUserDefaults] setObject:@"text" forKey:@"vant text"];
    EXPECT_EQ(platform::userDefaultsData("vant ä"), data);
    EXPECT_FALSE(platform::userDefaultsData("vant text"));
    EXPECT_FALSE(platform::userDefaultsData(kNoText));
    platform::setUserDefaultsData("vant empty", {});
    EXPECT_EQ(platform::userDefaultsWithPrefix("vant "),
              (std::map<std::string, Bytes>{{"vant ä", data}, {"vant empty", {}}}));
}

TEST_F(Mac, LaunchesAreAskedForAsTheyStand)
{
    const auto url = MacSandbox::openURL;
    const auto app = MacSandbox::openApp;
    const std::string path = this->app();
    const Lines arguments{"", "a b", "ü"};
    const Lines noText{kNoText};
    struct Row
    {
        const char *name;
        bool (*launch)(const MacSandbox::LaunchParams &, std::function<void(int)>);
        MacSandbox::LaunchParams params;
        Lines calls;
    };
    const Row rows[] = {
        {"default application",
         url,
         {"", "x:a b", arguments, true, false},
         {"hides=0", "activates=1", "new=0", "arguments=", "open x:a%20b"}},
        {"in the background",
         url,
         {"", "x:y", arguments, false, true},
         {"hides=1", "activates=0", "new=1", "arguments=", "open x:y"}},
        {"given application",
         url,
         {path, "x:y", arguments, true, true},
         {"hides=0", "activates=1", "new=1", "arguments=", "open x:y with " + path}},
        {"application",
         app,
         {path, "", arguments, false, true},
         {"hides=0", "activates=1", "new=1", "arguments=|a b|ü", "run " + path}},
        {"argument that is no text", app, {path, "", noText, true, true}, {}},
    };
    fakeMac().runningApplications = {{"com.example.foo", 4711}};
    for (const Row &row : rows) {
        const bool starts = !row.calls.empty();
        const std::string log = logOf([&] {
            EXPECT_EQ(launched(row.launch, row.params), starts ? std::optional(4711) : std::nullopt) << row.name;
        });
        EXPECT_EQ(log.find("successfully: application com.example.foo") != log.npos, starts) << log;
        EXPECT_EQ(asked(), row.calls) << row.name;
    }
    fakeMac().launchError = "no room";
    EXPECT_NE(logOf([&] { EXPECT_EQ(launched(app, rows[3].params), -1); }).find("RunWithNSWorkspace: "), path.npos);

    platform::LaunchRequest bad;
    EXPECT_FALSE(platform::launch(bad, {})) << "nothing to launch";
    bad.applicationPath = path;
    bad.url = kNoText;
    EXPECT_FALSE(platform::launch(bad, {})) << "not the application without its address";
    fakeMac().opensUrls = false;
    EXPECT_FALSE(extendRequestAuthorization() || platform::openUrl("") || platform::openUrl(kNoText));
    EXPECT_EQ(asked().back(), "open x-apple.systempreferences:com.apple.preference.security");
}

TEST_F(Mac, PanelIsSetAsAskedFor)
{
    Lines chosen;
    fakeMac().panelUrls = {"", app()};
    EXPECT_TRUE(MacSandbox::requestPermission(app() + "/x/..", ""));
    EXPECT_EQ(asked(),
              (Lines{"panel in " + app(), "multiple=0", "folders=1", "files=0", "prompt=授予访问权限",
                     "create " + app() + " options=2048"}));
    EXPECT_TRUE(MacSandbox::openNSFilePanel("", false, "", chosen));
    EXPECT_EQ(asked(), (Lines{"multiple=0", "folders=1", "files=1"}));
    EXPECT_EQ(chosen, Lines{app()}) << "addresses without a path are passed over";
    EXPECT_FALSE(MacSandbox::openNSFilePanel(kNoText, false, "", chosen));
    EXPECT_EQ(asked(), Lines{});
    fakeMac().panelResponse = NSModalResponseCancel;
    EXPECT_FALSE(MacSandbox::openNSFilePanel("", false, kNoText, chosen));
}

TEST_F(Mac, SystemAnswers)
{
    fakeMac().runningApplications = {{"", 1}, {"com.example.foo", 2}};
    fakeMac().installedApplications = {"com.example.foo", ""};
    EXPECT_TRUE(IsProcessRunningOC(@"com.example.foo"));
    EXPECT_FALSE(IsProcessRunningOC(@"com.example") || IsProcessRunningOC(static_cast<NSString *>(nil)));
    EXPECT_FALSE(MacUtils::IsProcessRunning("") || MacUtils::IsProcessRunning(kNoText) || MacSandbox::isRunning(3));
    EXPECT_FALSE(platform::isApplicationInstalled("") || platform::isApplicationInstalled("com.example"));
    EXPECT_FALSE(platform::isApplicationInstalled(kNoText) || platform::isApplicationRunning(kNoText));
    EXPECT_FALSE(platform::isApplicationInstalled(std::string("com.example.foo\0", 16))) << "not cut at a NUL";

    EXPECT_EQ(MacUtils::GetMainScreenSize(), (std::pair{1440.0, 900.0})) << "not where it stands";
    EXPECT_EQ(platform::secondsSinceLastInput(), 1.5);
    EXPECT_EQ(platform::groupContainer("group.x"), m_dir / "group");
    fakeMac().groupContainers["nil"] = "asked for nil";
    EXPECT_EQ(platform::groupContainer("group.y") + platform::groupContainer(kNoText), "");

    for (const auto &[flags, available] : {std::pair(2U, true), {6U, false}, {4U, false}, {0U, false}, {3U, true}}) {
        fakeMac().reachability = flags;
        EXPECT_EQ(MacUtils::checkNetworkAvailable(), available) << flags;
    }
    fakeMac().reachabilityUnknown = true;
    EXPECT_FALSE(platform::zeroAddressReachability());

    fakeMac().ticks = 24'000'000;
    EXPECT_EQ(MacUtils::GetTickCount(), 1000U);

    EXPECT_NE(logOf([] { platform::systemLog("grün %@"); }).find("grün %@"), std::string::npos);
    EXPECT_NE(logOf([] { platform::systemLog(kNoText); }).find("ÿ/x"), std::string::npos);
}

TEST_F(Mac, TimebaseThatIsNotToldIsOne)
{
    fakeMac().timebaseDenominator = 0;
    fakeMac().ticks = 24'000'000;
    EXPECT_EQ(MacUtils::GetTickCount(), 24U);
}

TEST_F(Mac, MenuTitlesAndAnnouncementsNeedAnApplication)
{
    updateMacOSMenuTitles({{"Open", "x"}});
    platform::announce(nullptr, "x");
    test::setMainMenu({"Open", "Close", "Gone"});
    updateMacOSMenuTitles({{"Open", "Öffnen"}, {"Gone", ""}});
    EXPECT_EQ(test::mainMenuTitles(), (Lines{"Open", "Öffnen", "Close", ""})) << "in submenus only";
    platform::announce(nullptr, "Größe");
    EXPECT_EQ(asked(), Lines{"announce Größe priority=90"});
}

TEST_F(Mac, CommandsAreThoseOfMacOS)
{
    for (const char *name : {"open", "sysctl"}) {
        const std::string program = m_dir / ("bin/" + std::string(name)), told = m_dir / "told";
        test::writeFile(
            program, "#!/bin/sh\necho 42\nprintf '%s ' \"$@\" > " + told + "~\n/bin/mv " + told + "~ " + told + "\n");
        fs::permissions(program, fs::perms::owner_all);
    }
    ::setenv("PATH", (m_dir / "bin").c_str(), 1);
    const auto told = [this] { return test::readFile(m_dir / "told"); };
    EXPECT_EQ(MacUtils::getSystemSharedMemorySize(), 42U);
    EXPECT_EQ(told(), "-n kern.sysv.shmmax ");
    EXPECT_TRUE(platform::revealFile("-a b"));
    EXPECT_TRUE(test::eventually([&] { return told() == "-R -a b "; }));
    fs::remove(m_dir / "bin/sysctl");
    EXPECT_EQ(MacUtils::getSystemSharedMemorySize(), 0U);
}
