#pragma once

#include "paths/platform/Clock.h"
#include "paths/platform/Reachability.h"
#include "tests/support/TestFiles.h"

#include <QString>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// The answers of the platform that the tests link. Set them before the library asks: it keeps what it hears.
struct FakePlatform
{
    std::string executablePath;
    std::string bundleExecutablePath;
    std::string bundlePath;
    std::string bundleIdentifier;
    /// Information dictionaries: of the running bundle under "", of others under their path or property list's path.
    std::map<std::string, std::map<std::string, std::string>> info;

    std::string applicationSupportDirectory;
    std::string homeDirectoryOfUser;
    std::map<std::string, std::string> groupContainers;

    std::vector<std::string> runningApplications;
    std::vector<std::string> openedUrls;

    std::vector<QString> revealedFiles;

    std::vector<QString> submenuItems;
    std::pair<double, double> screenSize;
    double secondsSinceLastInput = 0;
    std::optional<platform::ReachabilityFlags> reachability;
    std::uint64_t ticks = 0;
    platform::Timebase timebase;
    int timebaseReads = 0;
    std::string sharedMemorySizeCommand = "true";
};

FakePlatform &fakePlatform();

/// A bundle on disk and a platform that says that its executable runs.
class FakeBundle
{
public:
    /// `executable` is relative to the temporary folder ("Foo.app/Contents/MacOS/foo").
    explicit FakeBundle(const std::string &executable = "Foo.app/Contents/MacOS/foo");

    [[nodiscard]] const TempDir &dir() const { return m_dir; }
    [[nodiscard]] std::string operator/(const std::string &name) const { return m_dir / name; }
    /// Writes "mk.dat" of Foo.app.
    void writeGlobalFile(const std::string &content) const;
    /// The folder of the user's data outside the sandbox, made on disk.
    [[nodiscard]] std::string makeUserDataDir() const;

private:
    TempDir m_dir;
};

} // namespace test
