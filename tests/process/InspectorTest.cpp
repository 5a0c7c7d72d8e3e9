#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

using nlohmann::json;
using test::ProcessResult;
using test::RealBundle;

namespace {

constexpr char kBinaryPlist[] = "bplist00\xd1\x01\x02_\x10\x1a"
                                "CFBundleShortVersionStringU4.5.6\x08\x0b\x28\x00\x00\x00\x00\x00\x00\x01\x01\x00"
                                "\x00\x00\x00\x00\x00\x00\x03\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00"
                                "\x00\x00\x2e";

json doctorProblems(const RealBundle &bundle)
{
    return bundle.inspectJson({"doctor"}).at("doctor").at("problems");
}

} // namespace

TEST(Inspector, FollowsTheBundleWhereverItLies)
{
    const std::string place = "Meine Programme/日本語 ü/Reader Copy.app";
    const RealBundle bundle(place);
    const fs::path data = bundle.makeUserDataDir("Reader Copy");
    test::writeFile(bundle.globalFile(),
                    "[common]\nenable_log=0\nenable_sbx=0\napp_store=1\napp_international=1\n"
                    "group_name=group.test\n");
    const json answers = bundle.inspectJson({"locations", "switches"});

    const json &locations = answers.at("locations");
    EXPECT_EQ(locations.at("GetMainAppRootDir"), bundle.dir() / (place + "/"));
    EXPECT_EQ(locations.at("GetMainAppName"), "Reader Copy");
    EXPECT_EQ(locations.at("GetAppConfigDir"), bundle.dir() / (place + "/Contents/Resources/"));
    EXPECT_EQ(locations.at("GetUserDataDir"), data.string() + "/");
    EXPECT_EQ(locations.at("GetLogPath"), (data / "pdforvell-inspect.log").string());
    EXPECT_EQ(locations.at("GetAppName"), "PDF Orvell") << "the property list's name, not the folder's";
    EXPECT_EQ(answers.at("switches"),
              json({{"IsEnableFileLog", false},
                    {"IsEnableSandBox", false},
                    {"IsAppleStorePKG", true},
                    {"isInternationalApp", true},
                    {"GetShareGroupName", "group.test"}}));
    EXPECT_EQ(answers.size(), 2U);
    EXPECT_TRUE(fs::is_empty(data)) << "looking must not create anything";
}

TEST(Inspector, SymbolicLinkToTheExecutableFindsTheBundle)
{
    const RealBundle bundle;
    fs::create_symlink(bundle.inspector(), bundle.dir() / "shortcut");
    const ProcessResult result = test::runProcess(bundle.dir() / "shortcut", {"--json", "locations"}, bundle.home());
    EXPECT_EQ(json::parse(result.output).at("locations").at("GetMainAppRootDir"), bundle.dir() / "PDF Orvell.app/");
}

TEST(Inspector, OutsideABundleBundlePathsAreEmpty)
{
    const RealBundle bundle;
    fs::rename(bundle.dir() / "PDF Orvell.app", bundle.dir() / "plain");
    const std::string program = bundle.dir() / "plain/Contents/MacOS/pdforvell-inspect";
    const ProcessResult result = test::runProcess(program, {"--json"}, bundle.home());
    EXPECT_EQ(result.exitStatus, 1);
    const json answers = json::parse(result.output);
    EXPECT_EQ(answers.at("locations").at("GetMainAppRootDir"), "");
    EXPECT_EQ(answers.at("locations").at("GetAppConfigDir"), "");
    EXPECT_EQ(answers.at("locations").at("GetDatPath"), "mk.dat");
    EXPECT_EQ(answers.at("locations").at("GetUserDataDir"), bundle.home() + "/data//");
}

TEST(Inspector, DoctorNamesWhatIsWrongWithTheGlobalFile)
{
    struct Row
    {
        const char *name;
        const char *content;
        const char *problem; // after the file's name
    };
    const Row rows[] = {
        {"malformed line", "[common]\nenable_log=1\ngarbage\n", ":3: malformed line: every switch is off"},
        {"binary noise", "\xff\xfe\x01", ":1: malformed line: every switch is off"},
        {"neither 0 nor 1", "[common]\n\napp_store = 2\n", ":3: app_store is neither 0 nor 1 and counts as off"},
        {"past 64 bits", "[common]\nenable_sbx=99999999999999999999\n",
         ":2: enable_sbx is neither 0 nor 1 and counts as off"},
        {"no number", "[common]\r\nenable_log=yes\r\n", ":2: enable_log is neither 0 nor 1 and counts as off"},
        {"twice", "[common]\napp_international=1\napp_international=0\n",
         ":3: app_international is set more than once"},
    };
    const RealBundle bundle;
    for (const Row &row : rows) {
        test::writeFile(bundle.globalFile(), row.content);
        EXPECT_EQ(doctorProblems(bundle), json::array({bundle.globalFile().string() + row.problem})) << row.name;
    }
}

TEST(Inspector, DoctorNamesFilesThatAreNoFiles)
{
    const RealBundle bundle;
    const std::string globalFile = bundle.globalFile().string();
    fs::remove(globalFile);
    EXPECT_EQ(doctorProblems(bundle), json::array({globalFile + ": missing: every switch is off"}));
    fs::create_directory(globalFile);
    EXPECT_EQ(doctorProblems(bundle), json::array({globalFile + ": no regular file: every switch is off"}));
    fs::remove(globalFile);
    test::writeFile(globalFile, "[common]\nenable_log=1\n");
    const fs::path data = fs::path(bundle.home()) / "data/PDF Orvell/";
    EXPECT_EQ(doctorProblems(bundle), json::array({data.string() + ": does not exist: log lines are lost"}));

    static_cast<void>(bundle.makeUserDataDir());
    const std::string log = (data / "pdforvell-inspect.log").string();
    const auto expect = [&](const std::string &problem) {
        EXPECT_EQ(doctorProblems(bundle), json::array({log + problem}));
        EXPECT_EQ(bundle.inspect({"log", "message"}).exitStatus, 0) << "logging neither hangs nor fails";
        fs::remove(log);
    };
    fs::create_directory(log);
    expect(": no regular file: log lines are lost");
    ASSERT_EQ(::mkfifo(log.c_str(), 0600), 0);
    expect(": a FIFO: log lines are lost while nobody reads it");
    fs::create_symlink("/dev/full", log);
    expect(": no regular file: log lines are lost");
    fs::create_symlink(log, log);
    expect(": cannot be looked at (Too many levels of symbolic links): log lines are lost");
}

TEST(Inspector, DoctorNamesAUserDataFolderThatCannotBe)
{
    const RealBundle bundle;
    const std::string data = bundle.home() + "/data/PDF Orvell/";
    EXPECT_EQ(bundle.inspectJson({"doctor"}).at("doctor").at("notes"), json::array({data + ": does not exist yet"}));
    test::writeFile(bundle.home() + "/data", "");
    EXPECT_EQ(doctorProblems(bundle),
              json::array({data + ": does not exist and cannot be made in " + bundle.home() + "/data"}));
}

TEST(Inspector, PropertyListsInEveryForm)
{
    const RealBundle bundle;
    const std::string plist = bundle.contents("Info.plist").string();
    const auto version = [&bundle] {
        return bundle.inspectJson({"locations"}).at("locations").at("GetMainBundleVersionString").get<std::string>();
    };
    test::writeFile(plist, std::string(kBinaryPlist, sizeof kBinaryPlist - 1));
    EXPECT_EQ(version(), "4.5.6") << "binary";

    std::string deep = "<plist>";
    for (int i = 0; i < 100'000; ++i)
        deep += "<dict>";
    const std::pair<const char *, std::string> bad[] = {
        {"empty", ""},
        {"malformed", "<plist><dict><key>CFBundleShortVersionString</key><string>1.2"},
        {"no dictionary", "<plist version=\"1.0\"><array/></plist>"},
        {"value of another type",
         "<plist><dict><key>CFBundleShortVersionString</key><integer>1</integer></dict></plist>"},
        {"deeply nested", deep},
        {"binary cut short", std::string(kBinaryPlist, 40)},
    };
    for (const auto &[name, content] : bad) {
        test::writeFile(plist, content);
        EXPECT_EQ(version(), "") << name;
        EXPECT_EQ(doctorProblems(bundle),
                  json::array({plist + ": malformed, or holds no CFBundleShortVersionString: the version is empty"}))
            << name;
    }
    fs::remove(plist);
    EXPECT_EQ(doctorProblems(bundle), json::array({plist + ": missing: name, identifier and version are empty"}));
}

TEST(Inspector, PathsAreCreatedOnRequestOnly)
{
    const RealBundle bundle;
    qputenv("TMPDIR", bundle.home().c_str());
    const json missing = bundle.inspectJson({"paths"}).at("paths");
    EXPECT_TRUE(fs::is_empty(bundle.home()));
    const fs::path data = bundle.makeUserDataDir();
    const json shown = bundle.inspectJson({"paths"}).at("paths");
    EXPECT_TRUE(fs::is_empty(data) && shown.size() > missing.size());
    const json created = bundle.inspectJson({"create-paths"}).at("create-paths");
    EXPECT_EQ(created.size(), shown.size() + shown.at("notAsked").size());
    EXPECT_TRUE(fs::is_directory(data / "seal"));
}

TEST(Inspector, ExitStatusTellsWrongUse)
{
    const RealBundle bundle;
    EXPECT_EQ(bundle.inspect({}).exitStatus, 0);
    EXPECT_EQ(bundle.inspect({"--help"}).exitStatus, 0);
    EXPECT_EQ(bundle.inspect({"--version"}).output, "pdforvell-inspect " OND_TEST_VERSION "\n");
    for (const QStringList &wrong : {QStringList{"nonsense"}, {"--nonsense"}, {"log"}, {"log", "a", "b"}}) {
        const ProcessResult result = bundle.inspect(wrong);
        EXPECT_EQ(result.exitStatus, 2) << wrong.join(' ').toStdString();
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors, "");
    }
}

TEST(Inspector, LogActionWritesALine)
{
    const RealBundle bundle;
    const fs::path log = bundle.makeUserDataDir() / "pdforvell-inspect.log";
    EXPECT_EQ(bundle.inspectJson({"log", "lost"}).at("log").at("IsLogEnable"), false);
    EXPECT_FALSE(fs::exists(log));
    test::writeFile(log, "");
    EXPECT_EQ(bundle.inspectJson({"log", "kept"}).at("log").at("IsLogEnable"), true);
    EXPECT_NE(test::readFile(log).find("]  kept\n"), std::string::npos);
}
