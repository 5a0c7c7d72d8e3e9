#pragma once

#include "tests/support/Platform.h"
#include "tests/support/TestFiles.h"

#include <QString>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// The answers of the platform that the tests link. Set them before the library asks: it keeps what it hears.
struct FakePlatform
{
    std::optional<std::string> executablePath;
    std::string bundleExecutablePath, bundlePath;
    /// Information dictionaries: of the running bundle under "", of others under their path or property list's path.
    std::map<std::string, std::map<std::string, std::string>> info;

    std::string applicationSupportDirectory, homeDirectoryOfUser;
    std::map<std::string, std::string> groupContainers;

    std::set<std::string> installedApplications;

    /// Launches that were asked for; the test calls the handlers when it pleases.
    std::vector<std::pair<platform::LaunchRequest, platform::LaunchHandler>> launches;
    /// How often processes are looked up, and are still found running.
    int looks = 0, looksWhileRunning = 0;

    std::vector<platform::OpenPanelRequest> openPanels;
    std::optional<std::vector<std::string>> panelAnswer;

    std::map<std::string, std::vector<unsigned char>> userDefaults;
    bool keepsUserDefaults = true;
    int synchronisations = 0;
    /// Bookmark data is "options:path". Paths in here give none; data of another form does not resolve.
    std::set<std::string> pathsWithoutBookmark;
    bool staleBookmarks = false, deniesAccess = false;
    /// "start 1024 of 2048:/path" and the like of "stop", in order; 1024 is what the bookmark was resolved with.
    std::vector<std::string> accesses;
    std::vector<std::string> systemLog;

    std::vector<QString> announcements;
    std::vector<QString> submenuItems;
    double secondsSinceLastInput = 0;
    std::optional<platform::ReachabilityFlags> reachability;
    std::uint64_t nanoseconds = 0;
};

FakePlatform &fakePlatform();

/// A bundle on disk and a platform that says that its executable runs.
struct FakeBundle : TempDir
{
    /// `executable` is relative to the temporary folder ("Foo.app/Contents/MacOS/foo").
    explicit FakeBundle(const std::string &executable = "Foo.app/Contents/MacOS/foo");

    /// Writes "mk.dat" of Foo.app.
    void writeGlobalFile(const std::string &content) const
    {
        writeFile(*this / "Foo.app/Contents/Resources/mk.dat", content);
    }
    /// Writes section "product" of key "common" of the registry.
    void writeRegistry(const std::string &content) const
    {
        writeFile(*this / "support/Foo/reg/common.ini", "[product]\n" + content);
    }
    /// The folder of the user's data outside the sandbox, made on disk.
    [[nodiscard]] std::string makeUserDataDir() const;
};

} // namespace test
