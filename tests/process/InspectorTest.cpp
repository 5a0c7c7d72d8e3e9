#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
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
    // Longer than the fixed buffer that the path is asked into first.
    const std::string deep =
        std::string(250, 'd') + "/" + std::string(250, 'e') + "/" + std::string(250, 'f') + "/" + std::string(250, 'g');
    const std::string place = "Meine Programme/日本語 ü/" + deep + "/Reader Copy.app";
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
        {"number with a tail", "[common]\nenable_log=1abc\n", ":2: enable_log is neither 0 nor 1 and counts as on"},
        {"indented line", "[other]\nenable_log=0\n[common]\nenable_log=0\n  enable_sbx=1\n",
         ":4: enable_log takes in the indented lines below it"},
        {"empty", "", ": no section [common]: every switch is off"},
        {"twice", "[common]\napp_international=1\napp_international=0\n",
         ":3: app_international is set more than once, and the first value counts"},
    };
    const RealBundle bundle;
    static_cast<void>(bundle.makeUserDataDir());
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
    const fs::path data = fs::path(bundle.supportDir()) / "PDF Orvell/";
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
    if (fs::exists("/dev/full")) {
        fs::create_symlink("/dev/full", log);
        expect(": no regular file: log lines are lost");
    }
    fs::create_symlink(log, log);
    expect(": cannot be looked at (Too many levels of symbolic links): log lines are lost");
}

TEST(Inspector, DoctorNamesWhatIsWrongWithTheConfigurationFiles)
{
    const RealBundle bundle;
    const auto findings = [&bundle](const char *kind) { return bundle.inspectJson({"doctor"}).at("doctor").at(kind); };
    EXPECT_EQ(findings("problems"), json::array()) << "the files that the product comes with";

    const fs::path component = bundle.contents("Resources/cfgdata/componentConfig.ini");
    const fs::path server = bundle.contents("Resources/ressrc/chs/upnest.svr");
    const fs::path version = bundle.contents("Resources/data/mainversion.ini");
    fs::remove(component);
    fs::remove(server);
    fs::create_directory(server);
    test::writeFile(version, std::string("[version]\0", 10));
    EXPECT_EQ(findings("problems"),
              json::array({server.string() + ": no regular file: there is no distribution data",
                           version.string() + ": binary, no text: what it says is lost"}));
    EXPECT_EQ(findings("notes").at(0),
              component.string() + ": missing: names, addresses, ids and switches are the defaults");
}

TEST(Inspector, ProductAndIdentityAreThoseOfTheInstallation)
{
    const RealBundle bundle;
    test::writeFile(bundle.home() + "/data/applications/com.xundu.reader.desktop", "[Desktop Entry]\n");
    test::writeFile(bundle.home() + "/Applications/Other Name.app/Contents/Info.plist",
                    "<plist><dict><key>CFBundleIdentifier</key><string>com.lumo.reader</string></dict></plist>");
    const json answers = bundle.inspectJson({"product", "identity"});
    const json &product = answers.at("product");
    const json &identity = answers.at("identity");
    EXPECT_EQ(product.at("getProductName"), "PDF Orvell");
    EXPECT_EQ(product.at("getProductEdition"), 3);
    EXPECT_EQ(product.at("getAssociateAvoid"), json::array());
    EXPECT_EQ(identity.at("GetParentAppDir"), bundle.contents("MacOS/").string());
    EXPECT_NE(identity.at("GetProductVersion"), "");
    EXPECT_EQ(identity.at("IsHasXundu"), true) << "desktop entry";
    EXPECT_EQ(identity.at("IsHasLumo"), true) << "bundle";
    EXPECT_EQ(identity.at("IsHasFoxit"), false);
    EXPECT_FALSE(fs::exists(bundle.home() + "/data/PDF Orvell")) << "looking creates nothing";
}

TEST(Inspector, DoctorNamesAUserDataFolderThatCannotBe)
{
    const RealBundle bundle;
    const std::string data = bundle.supportDir() + "/PDF Orvell/";
    EXPECT_EQ(bundle.inspectJson({"doctor"}).at("doctor").at("notes"), json::array({data + ": does not exist yet"}));
    test::writeFile(bundle.supportDir(), "");
    EXPECT_EQ(doctorProblems(bundle),
              json::array({data + ": does not exist and cannot be made in " + bundle.supportDir()}));
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
                  json::array(
                      {plist + ": unreadable, malformed, or without CFBundleShortVersionString: the version is empty"}))
            << name;
    }
    fs::remove(plist);
    EXPECT_EQ(doctorProblems(bundle), json::array({plist + ": missing: name, identifier and version are empty"}));
}

TEST(Inspector, AddressesDifferExactlyByEditionPackageAndTestMarker)
{
    const RealBundle bundle;
    const fs::path marker = bundle.makeUserDataDir() / "use_test_server";
    const auto urls = [&bundle](const char *switches) {
        test::writeFile(bundle.globalFile(), std::string("[common]\n") + switches);
        return bundle.inspectJson({"urls"}).at("urls");
    };
    const auto same = [](const json &a, const json &b) {
        std::set<std::string> keys;
        for (const auto &answer : a.items()) {
            if (answer.value() == b.at(answer.key()))
                keys.insert(answer.key());
        }
        return keys;
    };
    const json domestic = urls("");
    const json international = urls("app_international=1\n");
    const json store = urls("app_international=1\napp_store=1\n");
    const json domesticStore = urls("app_store=1\n");
    test::writeFile(marker, "");
    const json onTestServers = urls("app_international=1\n");

    const std::regex form(R"(https://[a-z0-9-]+(\.[a-z0-9-]+)*\.example(/[a-z0-9/-]*(\?productId=502)?)?)");
    for (json answers : {domestic, store, onTestServers}) {
        for (const char *twin : {"GetDefSvrHostW", "GetHelpHtmlUrlA", "GetCloudCNDUrl", "GetDefCopyright"})
            answers.erase(twin);
        std::set<std::string> seen;
        for (const json &address : answers) {
            EXPECT_TRUE(!address.is_string() || std::regex_match(address.get<std::string>(), form)) << address;
            EXPECT_TRUE(!address.is_string() || seen.insert(address).second) << address << " stands twice";
        }
    }

    EXPECT_EQ(urls(""), domestic) << "the marker means nothing to the domestic edition";
    EXPECT_EQ(same(domestic, international),
              (std::set<std::string>{"GetMacInternationalPayWebHost", "IsAppleStorePKG", "usesTestServer"}));
    for (const auto &[web, appStore] : {std::pair(international, store), std::pair(domestic, domesticStore)}) {
        EXPECT_EQ(same(web, appStore).size(), web.size() - 2);
        EXPECT_NE(web.at("GetLoginUrl"), appStore.at("GetLoginUrl"));
    }
    for (const auto &answer : onTestServers.items()) {
        const std::string &key = answer.key();
        const bool onDefaultHost = key.find("Ocr") != std::string::npos || key.find("DefSvrHost") == 3
            || key == "GetOfficialUpgradeCfgUrl" || key == "usesTestServer";
        EXPECT_EQ(answer.value() != international.at(key), onDefaultHost) << key;
    }
}

TEST(Inspector, DigestsFiles)
{
    const RealBundle bundle;
    test::writeFile(bundle.dir() / "grün.txt", "abc");
    const QString path = QString::fromStdString(bundle.dir() / "grün.txt");
    EXPECT_EQ(bundle.inspectJson({"digest", path, "/nonexistent"}).at("digest"),
              json({{path.toStdString(), "90x01x50x98x3cxd2x4fxb0xd6x96x3fx7dx28xe1x7fx72x"}, {"/nonexistent", ""}}));
    EXPECT_EQ(bundle.inspect({"digest"}).exitStatus, 2);
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
    EXPECT_EQ(bundle.inspect({"log", "--config"}).exitStatus, 0);
    EXPECT_NE(test::readFile(log).find("]  func_host:https://svr.pdforvell.example\n"), std::string::npos);
}
