#include "tests/support/FakePlatform.h"

#include "tests/support/Answer.h"

namespace test {

FakePlatform &fakePlatform()
{
    static FakePlatform platform;
    return platform;
}

FakeBundle::FakeBundle(const std::string &executable)
{
    writeFile(*this / executable, "");
    FakePlatform &platform = fakePlatform();
    platform.executablePath = platform.bundleExecutablePath = *this / executable;
    platform.applicationSupportDirectory = *this / "support";
}

std::string FakeBundle::makeUserDataDir() const
{
    std::string path = *this / "support/Foo/";
    std::filesystem::create_directories(path);
    return path;
}

} // namespace test

namespace platform {

using test::fakePlatform;

// No test depends on what these do.
using Size = std::pair<double, double>;
ANSWER(std::string bundleIdentifier(), {})
ANSWER(Size mainScreenSize(), {})
ANSWER(std::uint64_t sharedMemorySize(), 0)
ANSWER(bool isApplicationRunning(const std::string &bundleId), bundleId == "com.example.running")
ANSWER(bool openUrl(const std::string & /*url*/), false)
ANSWER(bool revealFile(const QString & /*path*/), false)

// What was set, as it stands.
using Data = std::vector<unsigned char>;
using Defaults = std::map<std::string, Data>;
ANSWER(std::optional<std::string> executablePath(), fakePlatform().executablePath)
ANSWER(std::string bundleExecutablePath(), fakePlatform().bundleExecutablePath)
ANSWER(std::string bundlePath(), fakePlatform().bundlePath)
ANSWER(std::string bundleInfo(const std::string &bundle, const std::string &key), fakePlatform().info[bundle][key])
ANSWER(std::string bundleInfo(const std::string &key), bundleInfo({}, key))
ANSWER(std::string propertyListInfo(const std::string &plist, const std::string &key), bundleInfo(plist, key))
ANSWER(std::string applicationSupportDirectory(), fakePlatform().applicationSupportDirectory)
ANSWER(std::string homeDirectoryOfUser(), fakePlatform().homeDirectoryOfUser)
ANSWER(std::string groupContainer(const std::string &group), fakePlatform().groupContainers[group])
ANSWER(bool isApplicationInstalled(const std::string &id), fakePlatform().installedApplications.count(id) != 0)
ANSWER(Defaults userDefaultsWithPrefix(const std::string & /*prefix*/), fakePlatform().userDefaults)
ANSWER(std::optional<ReachabilityFlags> zeroAddressReachability(), fakePlatform().reachability)
ANSWER(std::uint64_t monotonicNanoseconds(), fakePlatform().nanoseconds)
ANSWER(double secondsSinceLastInput(), fakePlatform().secondsSinceLastInput)
ANSWER(bool isProcessRunning(int /*processId*/), ++fakePlatform().looks <= fakePlatform().looksWhileRunning)
ANSWER(std::optional<Data> userDefaultsData(const std::string &key),
       fakePlatform().userDefaults.count(key) != 0 ? std::optional(fakePlatform().userDefaults[key]) : std::nullopt)

// Kept for the test.
ANSWER(void systemLog(const std::string &message), fakePlatform().systemLog.push_back(message))
ANSWER(void announce(QWidget * /*source*/, const QString &text), fakePlatform().announcements.push_back(text))
ANSWER(void synchroniseUserDefaults(), static_cast<void>(++fakePlatform().synchronisations))
ANSWER(bool launch(const LaunchRequest &request, const LaunchHandler &handler),
       fakePlatform().launches.emplace_back(request, handler), true)
ANSWER(std::optional<std::vector<std::string>> runOpenPanel(const OpenPanelRequest &request),
       fakePlatform().openPanels.push_back(request), fakePlatform().panelAnswer)

void setUserDefaultsData(const std::string &key, const Data &data)
{
    if (fakePlatform().keepsUserDefaults)
        fakePlatform().userDefaults[key] = data;
}

CreatedBookmark createBookmark(const std::string &path, unsigned long options)
{
    if (fakePlatform().pathsWithoutBookmark.count(path) != 0)
        return {{}, "no bookmark"};
    const std::string text = std::to_string(options) + ":" + path;
    return {{text.begin(), text.end()}, {}};
}

ResolvedBookmark resolveBookmark(const Data &data, unsigned long options)
{
    const std::string text(data.begin(), data.end());
    if (text.find(':') == std::string::npos)
        return {"no bookmark data", false, {}, {}};
    const auto note = [name = std::to_string(options) + " of " + text](const char *what) {
        fakePlatform().accesses.push_back(what + name);
        return !fakePlatform().deniesAccess;
    };
    return {{}, fakePlatform().staleBookmarks, [note] { return note("start "); }, [note] { note("stop "); }};
}

void retitleSubmenuItems(const std::function<std::optional<QString>(const QString &title)> &newTitle)
{
    for (QString &item : fakePlatform().submenuItems)
        item = newTitle(item).value_or(item);
}

} // namespace platform
