#include "paths/MacBookmark.h"
#include "paths/MacUtilsOC.h"
#include "paths/platform/Announcement_p.h"
#include "paths/platform/Applications_p.h"
#include "paths/platform/Bookmark_p.h"
#include "paths/platform/Bundle_p.h"
#include "paths/platform/Clock_p.h"
#include "paths/platform/FileManager_p.h"
#include "paths/platform/Idle_p.h"
#include "paths/platform/Menu_p.h"
#include "paths/platform/OpenPanel_p.h"
#include "paths/platform/Reachability_p.h"
#include "paths/platform/Screen_p.h"
#include "paths/platform/SystemLog_p.h"
#include "paths/platform/System_p.h"
#include "paths/platform/UserDefaults_p.h"
#include "paths/platform/UserDirectories_p.h"
#include "paths/platform/Workspace_p.h"
#import "tests/mac/FakeMac.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>
#include <future>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

using test::fakeMac;
using test::Lines;

namespace {

using Bytes = std::vector<unsigned char>;

constexpr char kNoText[] = "\xff/x", kVersion[] = "CFBundleShortVersionString";

std::string plist(const std::string &version)
{
    return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>CFBundleName</key><string>Länge</string>"
           "<key>CFBundleIdentifier</key><string>com.example.foo</string><key>Number</key><integer>1</integer>"
           "<key>CFBundleExecutable</key><string>main</string><key>CFBundleShortVersionString</key><string>"
        + version + "</string></dict></plist>";
}

std::string decomposed(const std::string &path)
{
    return QString::fromStdString(path).normalized(QString::NormalizationForm_D).toStdString();
}

/// A user with an empty home, and a helper that runs deep inside an application.
class Mac : public testing::Test
{
protected:
    Mac()
    {
        for (const char *name : {"HOME", "CFFIXED_USER_HOME"})
            ::setenv(name, m_dir.path().c_str(), 1);
        test::writeFile(m_plist, plist("1.2.3"));
        test::writeFile(m_helper + "/Contents/Info.plist", plist("4.5.6"));
        fakeMac().executable = m_helper + "/Contents/MacOS/b";
        // As on a volume to which both are the same name.
        fs::create_directory_symlink("Ä.app", m_dir / decomposed("Ä.app"));
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
    const std::string m_helper = app() + "/Contents/Helpers/B.app", m_plist = app() + "/Contents/Info.plist";
};

/// What the system log receives meanwhile.
template <typename Call> std::string logOf(Call call)
{
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

/// What a launch ends with, on another thread; nothing when there is no launch.
std::optional<platform::LaunchOutcome> launched(const platform::LaunchRequest &request)
{
    const auto outcome = std::make_shared<std::promise<platform::LaunchOutcome>>();
    const auto report = [outcome, caller = std::this_thread::get_id()](const platform::LaunchOutcome &end) {
        EXPECT_NE(std::this_thread::get_id(), caller);
        outcome->set_value(end);
    };
    const bool started = platform::launch(request, report); // which must not need the caller's handler any longer
    return started ? std::optional(outcome->get_future().get()) : std::nullopt;
}

} // namespace

/// In place of Qt's own: no program of this name is here.
bool QProcess::startDetached(qint64 *)
{
    fakeMac().asked.push_back((QStringList(program()) + arguments()).join('|').toStdString());
    return true;
}

// Rules that hold on every platform are tested on a fake one.

TEST_F(Mac, BundlesAnswerForThemselves)
{
    const std::string programs = m_helper + "/Contents/MacOS/";
    for (const char *there : {"none", "b", "main"}) { // the last one is the bundle's own
        test::writeFile(programs + there, "");
        EXPECT_EQ(platform::bundleExecutablePath(), programs + "b") << there;
    }
    fakeMac().executable = programs + "/main";
    EXPECT_EQ(platform::bundleExecutablePath(), programs + "main") << "as the bundle has it";
    EXPECT_EQ(platform::bundlePath(), m_helper);
    EXPECT_EQ(platform::bundleIdentifier(), "com.example.foo");
    EXPECT_EQ(platform::bundleInfo(kVersion), "4.5.6");
    EXPECT_EQ(platform::bundleInfo(app(), kVersion), "1.2.3");
    EXPECT_EQ(platform::propertyListInfo(m_plist, "CFBundleName"), "Länge");
    EXPECT_EQ(platform::bundleInfo("Number"), "") << "no text";
    EXPECT_EQ(platform::bundleInfo(kNoText) + platform::bundleInfo(kNoText, kVersion), "");
    EXPECT_EQ(platform::propertyListInfo(kNoText, kVersion), "");
    const std::string containers = m_dir / "Library/Group Containers/";
    fakeMac().ownsGroups = true;
    EXPECT_EQ(platform::groupContainer("group.x"), containers + "group.x");
    EXPECT_EQ(platform::groupContainer(kNoText), "");
    fakeMac().ownsGroups = false;
    EXPECT_EQ(platform::groupContainer("group.y"), containers + "group.y") << "whoever asks";
    EXPECT_FALSE(fs::exists(containers + "group.y"));
    EXPECT_EQ(platform::applicationSupportDirectory(), m_dir / "Library/Application Support");
    ::setenv("CFFIXED_USER_HOME", "/Ä", 1);
    EXPECT_EQ(platform::applicationSupportDirectory(), decomposed("/Ä/Library/Application Support"));
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
    ASSERT_TRUE(MacBookmark::createBookmark(app()));
    EXPECT_EQ(asked(), Lines{"create " + app() + " options=2048"});
    EXPECT_NE(test::readFile(m_dir / "GNUstep/Defaults/mac_tests.plist").find("vant_pdf_"), std::string::npos);

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
    EXPECT_EQ(platform::createBookmark(kNoText, 0).data, Bytes());
    EXPECT_EQ(platform::createBookmark("", 0).data, Bytes());
    EXPECT_EQ(asked(), Lines{}) << "no path";
    EXPECT_NE(platform::resolveBookmark({1, 2}, 0).error.find("refused"), std::string::npos);
    fakeMac().createsBookmarks = false;
    EXPECT_NE(platform::createBookmark(app(), 0).error.find("refused"), std::string::npos) << "not the user's text";
}

TEST_F(Mac, DefaultsKeepBytesAndPassOverOtherValues)
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
}

TEST_F(Mac, LaunchesAreAskedForAsTheyStand)
{
    const std::pair<platform::LaunchRequest, Lines> rows[] = {
        // address, application, hides, activates, a new instance, arguments
        {{"x:a%20b", "", false, true, false, {}}, {"hides=0", "activates=1", "new=0", "arguments=", "open x:a%20b"}},
        {{"x:y", "", true, false, true, {}}, {"hides=1", "activates=0", "new=1", "arguments=", "open x:y"}},
        {{"x:y", app(), false, true, false, {}},
         {"hides=0", "activates=1", "new=0", "arguments=", "open x:y with " + app()}},
        {{"", app(), false, true, false, {"", "a b", "ü"}},
         {"hides=0", "activates=1", "new=0", "arguments=|a b|ü", "run " + app()}},
        {{"", app(), false, true, false, {kNoText}}, {}},
        {{}, {}}, // nothing to launch
        {{kNoText, app(), false, true, false, {}}, {}}, // not the application without its address
    };
    fakeMac().runningApplications = {{"com.example.foo", 4711}};
    for (const auto &[request, calls] : rows) {
        const auto outcome = launched(request);
        EXPECT_EQ(asked(), calls);
        ASSERT_NE(outcome.has_value(), calls.empty());
        EXPECT_EQ(outcome ? outcome->processId : 4711, 4711);
        EXPECT_EQ(outcome ? outcome->description : "", outcome ? "application com.example.foo" : "");
    }
    fakeMac().launchError = "no room";
    EXPECT_FALSE(launched(rows[0].first)->launched);
    EXPECT_NE(launched(rows[0].first)->description.find("no room"), std::string::npos);

    asked();
    EXPECT_TRUE(platform::openUrl("x:a"));
    EXPECT_EQ(asked(), Lines{"open x:a"});
    fakeMac().opensUrls = false;
    for (const char *url : {"x:a", "", kNoText})
        EXPECT_FALSE(platform::openUrl(url)) << url;
}

TEST_F(Mac, PanelIsSetAsAskedFor)
{
    int none = 0;
    const QCoreApplication application(none, nullptr);
    QTimer::singleShot(0, [] { fakeMac().asked.push_back("end of a dialog"); });
    fakeMac().panelUrls = {"", app()};
    EXPECT_EQ(platform::runOpenPanel({app(), true, "授予"}), Lines{app()}) << "the other one has no path";
    EXPECT_EQ(
        asked(),
        (Lines{"panel in " + app(), "multiple=0", "folders=1", "files=0", "prompt=授予", "end of a dialog", "run"}));
    EXPECT_EQ(platform::runOpenPanel({}), Lines{decomposed(app())});
    EXPECT_EQ(asked(), (Lines{"multiple=0", "folders=1", "files=1", "run"}));
    EXPECT_EQ(platform::runOpenPanel({m_dir.path(), false, ""}), Lines{decomposed(app())}) << "another folder";
    EXPECT_EQ(platform::runOpenPanel({app() + "/", false, ""}), Lines{decomposed(app())}) << "no slash at the end";
    asked();
    EXPECT_FALSE(platform::runOpenPanel({kNoText, false, ""}));
    EXPECT_EQ(asked(), Lines{});
    for (const NSInteger response : {0, -1000, -1001, 2}) { // cancel, stop, abort, and what may come
        fakeMac().panelResponse = response;
        EXPECT_FALSE(platform::runOpenPanel({"", false, kNoText})) << response;
    }
}

TEST_F(Mac, SystemAnswers)
{
    const pid_t ended = ::fork();
    if (ended == 0)
        ::_exit(0);
    ASSERT_EQ(::waitpid(ended, nullptr, 0), ended);
    fakeMac().runningApplications = {{"", 1}, {"", ended}, {"com.example.foo", ::getpid()}};
    fakeMac().installedApplications = {"com.example.foo", ""};
    EXPECT_TRUE(platform::isApplicationInstalled("com.Example.foo"));
    EXPECT_TRUE(IsProcessRunningOC(@"com.example.foo"));
    EXPECT_FALSE(IsProcessRunningOC(@"com.Example.foo"));
    EXPECT_FALSE(IsProcessRunningOC(static_cast<NSString *>(nil)));
    EXPECT_TRUE(platform::isProcessRunning(::getpid()));
    EXPECT_TRUE(platform::isProcessRunning(1)) << "of another user, unless root tests";
    EXPECT_FALSE(platform::isProcessRunning(::getppid()));
    EXPECT_FALSE(platform::isProcessRunning(ended)) << "before the run loop has told";
    fakeMac().runningApplications.clear();
    EXPECT_TRUE(IsProcessRunningOC(@"com.example.foo"));
    fakeMac().told.reset();
    EXPECT_FALSE(IsProcessRunningOC(@"com.example.foo"));
    for (const std::string &id : {std::string(), std::string("com.example"), std::string(kNoText)}) {
        EXPECT_FALSE(platform::isApplicationInstalled(id)) << id;
        EXPECT_FALSE(platform::isApplicationRunning(id)) << id;
    }
    EXPECT_FALSE(platform::isApplicationInstalled(std::string("com.example.foo\0", 16))) << "not cut at a NUL";

    EXPECT_EQ(platform::mainScreenSize(), (std::pair{1440.0, 900.0})) << "not where it stands";
    EXPECT_EQ(platform::secondsSinceLastInput(), 1.5);
    for (const std::uint32_t flags : {0U, 2U, 3U, 4U, 6U}) {
        fakeMac().reachability = flags;
        EXPECT_EQ(platform::zeroAddressReachability()->reachable, (flags & 2U) != 0) << flags;
        EXPECT_EQ(platform::zeroAddressReachability()->connectionRequired, (flags & 4U) != 0) << flags;
    }
    fakeMac().reachabilityUnknown = true;
    EXPECT_FALSE(platform::zeroAddressReachability());

    fakeMac().ticks = 24'000'000;
    EXPECT_EQ(platform::monotonicNanoseconds(), 1'000'000'000U);
    EXPECT_NE(logOf([] { platform::systemLog("grün %@"); }).find("grün %@"), std::string::npos);
    EXPECT_NE(logOf([] { platform::systemLog(kNoText); }).find("ÿ/x"), std::string::npos);
}

TEST_F(Mac, TimebaseThatIsNotToldIsOne)
{
    fakeMac().timebaseDenominator = 0;
    fakeMac().ticks = 24;
    EXPECT_EQ(platform::monotonicNanoseconds(), 24U);
}

TEST_F(Mac, MenuTitlesAndAnnouncementsNeedAnApplication)
{
    const auto retitle = [](const QString &title) {
        return title == "Open" ? std::optional("Ö" + title) : std::nullopt;
    };
    platform::retitleSubmenuItems(retitle);
    platform::announce(nullptr, "x");
    test::setMainMenu({"Open", "Close"});
    platform::retitleSubmenuItems(retitle);
    EXPECT_EQ(test::mainMenuTitles(), (Lines{"Open", "ÖOpen", "Close"})) << "in submenus only";
    platform::announce(nullptr, QString(QChar(u'\0')));
    platform::announce(nullptr, "Größe");
    fakeMac().hasMainWindow = true;
    platform::announce(nullptr, "Größe");
    EXPECT_EQ(asked(),
              (Lines{"announce Größe from the application priority=90", "announce Größe from the window priority=90"}));
}

TEST_F(Mac, CommandsAreThoseOfMacOS)
{
    const std::string program = m_dir / "bin/sysctl", told = m_dir / "told";
    test::writeFile(program, "#!/bin/sh\necho 42\nprintf '%s ' \"$@\" > '" + told + "'\n");
    fs::permissions(program, fs::perms::owner_all);
    ::setenv("PATH", (m_dir / "bin").c_str(), 1);
    EXPECT_EQ(platform::sharedMemorySize(), 42U);
    EXPECT_EQ(test::readFile(told), "-n kern.sysv.shmmax ");
    EXPECT_TRUE(platform::revealFile("-a b"));
    EXPECT_EQ(asked(), Lines{"/usr/bin/open|-R|-a b"});
    fs::remove(program);
    EXPECT_EQ(platform::sharedMemorySize(), 0U);
}
