#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

#include <array>
#include <regex>
#include <set>
#include <sys/stat.h>

namespace fs = std::filesystem;

using namespace std::string_literals;
using nlohmann::json;
using test::RealBundle;

const std::string kMissing = "(missing)", kFolder = "(folder)", kPipe = "(pipe)", kLoop = "(loop)";

/// A file of this content, or what else may be there.
static void put(const std::string &path, const std::string &content)
{
    if (content == kFolder)
        fs::create_directories(path);
    else if (content == kLoop)
        fs::create_symlink(path, path);
    else if (content != kMissing)
        test::writeFile(path, content);
    if (content == kPipe && fs::remove(path) && ::mkfifo(path.c_str(), 0600) != 0)
        ADD_FAILURE() << path;
}

TEST(Inspector, FollowsTheBundleWhereverItLies)
{
    const std::string place = "Meine Programme/日本語 ü/Reader Copy.app";
    const RealBundle bundle(place);
    const fs::path data = bundle.makeUserDataDir("Reader Copy");
    put(bundle.globalFile(), "[common]\napp_store=1\ngroup_name=group.test\n");
    put(bundle.contents("Info.plist"),
        "<plist><dict><key>CFBundleShortVersionString</key><string>4.5.6</string></dict></plist>");
    put(data / "reg", kFolder);
    put(bundle.home() + "/Applications/X.app/Contents/Info.plist",
        "<plist><dict><key>CFBundleIdentifier</key><string>com.lumo.reader</string></dict></plist>");
    const json answers = bundle.inspectJson({"locations", "switches", "product", "identity"});
    const json &locations = answers.at("locations"), &identity = answers.at("identity");
    EXPECT_EQ(locations.at("GetMainAppRootDir"), bundle / (place + "/"));
    EXPECT_EQ(locations.at("GetLogPath"), (data / "pdforvell-inspect.log").string());
    EXPECT_EQ(locations.at("GetMainBundleVersionString"), "4.5.6");
    EXPECT_EQ(answers.at("switches").at("GetShareGroupName"), "group.test");
    EXPECT_EQ(answers.at("product").at("getProductEdition"), 3);
#ifndef __APPLE__ // where Launch Services is asked, which does not know it so soon
    EXPECT_EQ(identity.at("IsHasLumo"), true);
#endif
    EXPECT_NE(identity.at("GetProductVersion"), "");
}

TEST(Inspector, DoctorNamesEveryFileThatIsNotAsItShouldBe)
{
    const RealBundle bundle;
    put(bundle.globalFile(), "[common]\nenable_log=1\napp_international=1\n");
    const std::string support = bundle.supportDir(), data = bundle.makeUserDataDir().string();
    const std::string mk = bundle.globalFile(), plist = bundle.contents("Info.plist");
    const std::string log = data + "/pdforvell-inspect.log", resources = bundle.contents("Resources/").string();
    const std::string component = resources + "cfgdata/componentConfig.ini", config = data + "/config.ini";
    const std::string languages = resources + "cfgdata/language.json";
    // clang-format off
    const std::array<std::string, 3> rows[] = {
        // path, content, what is found behind the path (whole for the folder of all applications)
        {mk, "[common]\nenable_log=1\ngarbage\n", ":3: a line that is neither [section], key=value nor ;comment"},
        {mk, "[common]\r\n\r\napp_store = 2\r\n", ":3: app_store is neither 0 nor 1"},
        {mk, "[common]\nenable_log=0\n x=1\n", ":3: enable_log takes in the indented line below it"},
        {mk, "[common]\napp_store=1\napp_store=0\n", ":3: app_store is set more than once"},
        {mk, "[common]\nenable_lgo=1\n", ":2: enable_lgo is not a key that is read"},
        {mk, "[common]\nlist=" + std::string(190, '=') + "\ngroup_name=" + std::string(300, 'g') + "\n", ":3: a line of more than 199 bytes, which is not read as one"},
        {mk, "", ": there is no section [common]"},
        {mk, kMissing, ": missing"},
        {data, kMissing, ": does not exist"},
        {data, "", ": something that is no folder lies here"},
        {support, "", data + ": does not exist, and cannot be made in " + support},
        {log, kPipe, ": a FIFO"},
        {log, kLoop, ": cannot be looked at (Too many levels of symbolic links)"},
        {component, kMissing, ": missing"},
        {component, "[product]\nproduct_edition=three\n", ":2: product/product_edition is no number"},
        {component, "[product]\n\nprodct_name=x\n", ":3: product/prodct_name is not a key that the library reads"},
        {component, "[product]\nproduct_name=\xfc\n", ": not in UTF-8"},
        {resources + "data/mainversion.ini", "[version]\ndate=@Variant(\\0)\n", ":2: version/date is a serialized value, which is not unpacked"},
        {bundle.contents("MacOS/orvell-account"), "", ": missing or not executable"},
        {resources + "ressrc/chs/upnest.svr", kFolder, ": no regular file"},
        {resources + "data/help.pdf", "", ": no PDF document"},
        {languages, "[", ": malformed, or without languages"},
        {languages, R"({"languages":[{"show_name":"x","code":"a"},{"show_name":"x","code":"b"}]})", ": \"x\" stands in the menu more than once"},
        {languages, R"({"languages":[{"show_name":"x","code":"a"},{"code":"b"}]})", ": entry 2 has no name"},
        {config, "[a]\nb\n", ":2: a line that is neither [section], KEY=VALUE nor ;comment"},
        {config + ".lock", kFolder, ": something that is no file lies in the place of a lock"},
        {config + ".lock", "", ": a lock that names nobody"},
        {config + ".lock", "1\nprogram\nelsewhere\n", ": a lock of another machine, elsewhere"},
        {config + ".lock", "1\nprogram\n" + QSysInfo::machineHostName().toStdString() + "\n", ": a lock that nobody holds"},
        {data + "/reg/key.ini.lock", "2147483647\nprogram\n" + QSysInfo::machineHostName().toStdString() + "\n", ": a lock of a program that has ended"},
        {data + "/reg", "", ": no folder"},
        {data + "/reg", kLoop, ": cannot be looked at (Too many levels of symbolic links)"},
        {data + "/reg/a/key.ini", kPipe, ": no regular file"},
        {data + "/reg/common.ini", "[language]\ncurrent_language=xx\n", ": the language in use, \"xx\", is not one of the menu"},
#if !defined(__APPLE__) && !defined(OND_TEST_MAC)
        {support + "/com.pdforvell.reader/user-defaults.ini", "vant_pdf_" + support + "/com.pdforvell.reader/user-defaults.ini=\"eA==\"", ": its bookmark does not resolve"},
#endif
        {plist, kMissing, ": missing"},
        {plist, "bplist00", ": unreadable, malformed, or without CFBundleShortVersionString"},
    };
    // clang-format on
    for (const auto &[path, content, found] : rows) {
        std::error_code absent;
        fs::rename(path, bundle / "aside", absent);
        put(path, content);
        const json doctor = bundle.inspectJson({}).at("doctor"); // while every section answers
        json findings = json::array();
        for (const json &row : doctor.at("checks"))
            if (row.at("state") != "ok")
                findings.push_back(row.value("path", "") + (row.at("line") == 0 ? "" : ":" + row.at("line").dump())
                                   + ": " + row.value("text", ""));
        EXPECT_EQ(findings, json::array({(path == support ? "" : path) + found}));
        fs::remove_all(path);
        if (!absent)
            fs::rename(bundle / "aside", path);
        fs::remove_all(log);
    }
    EXPECT_EQ(bundle.inspect({"doctor"}).exitStatus, 0);
    put(mk, "");
    EXPECT_EQ(bundle.sh("\"$0\" doctor >out || grep -c '^      there is no section' out").output, "1\n");
}

TEST(Inspector, ReportTellsNobodyWhoTheUserIs)
{
    const RealBundle bundle;
    const std::string page = bundle / "report.html", data = bundle.makeUserDataDir();
    put(bundle.globalFile(), "[common]\nenable_log=1\napp_international=1\n");
    put(data + "/reg/common.ini", "[product]\niid=1\n");
    ASSERT_EQ(bundle.inspect({"login", "jo@example.org"}, "opensesame\n").exitStatus, 0);
    const json account = bundle.inspectJson({"account"}).at("account");
    ASSERT_EQ(account.at("email"), "jo@example.org");
    EXPECT_EQ(bundle.sh("\"$0\" log \"opened $HOME/a <b>.pdf token=abcdefgh\"").exitStatus, 0);
    EXPECT_EQ(bundle.inspect({"report", page.c_str()}).exitStatus, 0);
    const std::string text = test::readFile(page);
    for (const std::string &secret :
         {"jo@example.org"s, account.at("open_id").get<std::string>(), bundle.home(), "abcdefgh"s})
        EXPECT_EQ(text.find(secret), std::string::npos) << secret;
    EXPECT_NE(text.find("opened ~/a &lt;b&gt;.pdf token=&lt;token 1&gt;"), std::string::npos) << text;
    EXPECT_NE(text.find("e-mail address (1)"), std::string::npos) << "what was taken out is said";
    const json report = bundle.inspectJson({"report"}).at("report");
    EXPECT_EQ(report.at("sections").size(), 9U);
    EXPECT_NE(report.at("sections").at("identity").at("GetIid"), 1) << "the number of the installation";
    EXPECT_EQ(report.at("log").at(0).dump().substr(0, 3), "\"20") << "its time";
    EXPECT_EQ(bundle.inspect({"doctor"}).exitStatus, 0) << "the accounts are sound";
    EXPECT_EQ(bundle.sh("chmod go+w \"$(dirname \"$(find . -name accounts.json)\")\"; \"$0\" doctor").exitStatus, 1);
    EXPECT_EQ(bundle.inspect({"report", "/none/report.html"}).exitStatus, 1);
}

TEST(Inspector, AddressesDifferExactlyByEditionPackageAndTestMarker)
{
    const RealBundle bundle;
    const std::set<std::string> twins = {"GetDefSvrHostW", "GetHelpHtmlUrlA", "GetCloudCNDUrl", "GetDefCopyright"};
    const std::regex form(R"("https://[a-z0-9-]+(\.[a-z0-9-]+)*\.example(/[a-z0-9/-]*(\?productId=502)?)?")");
    const auto urls = [&](const std::string &switches) {
        put(bundle.globalFile(), "[common]\n" + switches);
        json answers = bundle.inspectJson({"urls"}).at("urls");
        std::set<std::string> seen;
        for (const auto &answer : answers.items()) {
            if (answer.value().is_string() && twins.count(answer.key()) == 0) {
                EXPECT_TRUE(std::regex_match(answer.value().dump(), form)) << answer.value();
                EXPECT_TRUE(seen.insert(answer.value()).second) << answer.value() << " stands twice";
            }
        }
        return answers;
    };
    const json domestic = urls(""), international = urls("app_international=1\n");
    const json store = urls("app_international=1\napp_store=1\n");
    put(bundle.makeUserDataDir() / "use_test_server", "");
    const json onTestServers = urls("app_international=1\n");
    const auto expectDiffering = [](const json &before, const json &after, const std::string &names) {
        for (const auto &answer : after.items())
            EXPECT_EQ(answer.value() != before.at(answer.key()), std::regex_search(answer.key(), std::regex(names)))
                << answer.key() << " by " << names;
    };
    expectDiffering(domestic, international, "^(?!GetMacInternationalPayWebHost$|IsAppleStorePKG$|usesTestServer$)");
    expectDiffering(international, store, "^IsAppleStorePKG$|^GetLoginUrl$");
    expectDiffering(international, onTestServers, "Ocr|^...DefSvrHost|^GetOfficialUpgradeCfgUrl$|^usesTestServer$");
    expectDiffering(domestic, urls(""), "^the marker means nothing to this edition$");
}

TEST(Inspector, LookingCreatesNothing)
{
    const test::TempDir temporary; // the folder that the library sees as such
    qputenv("TMPDIR", temporary.path().c_str());
    for (const std::string switches : {"app_international=1\n", "enable_sbx=1\n"}) {
        const RealBundle bundle;
        put(bundle.globalFile(), "[common]\n" + switches);
        const std::string data = bundle.inspectJson({"locations"}).at("locations").at("GetUserDataDir");
        const auto count = [&] { return std::distance(fs::recursive_directory_iterator(temporary.path()), {}); };
        for (const std::string &folder : {bundle.home(), data, data + "reg"}) {
            put(folder, kFolder);
            const auto before = count();
            const json languages = bundle.inspectJson({}).at("languages");
            static_cast<void>(bundle.inspect({"registry", "common"}));
            EXPECT_EQ(count(), before) << folder;
            EXPECT_EQ(languages.at("codes").at(0), "en");
            EXPECT_EQ(languages.at("notAsked").empty(), switches[0] == 'e' || folder == data + "reg");
        }
        const json shown = bundle.inspectJson({"paths"}).at("paths");
        const json created = bundle.inspectJson({"create-paths"}).at("create-paths");
        EXPECT_EQ(created.size(), shown.size() + shown.at("notAsked").size());
        for (const auto &[name, path] : created.items())
            EXPECT_NE(path, "") << name;
        EXPECT_TRUE(fs::is_directory(data + "seal"));
    }
}

TEST(Inspector, ActionsAnswerOrSayWhatIsWrong)
{
    const RealBundle bundle;
    const std::string data = bundle.makeUserDataDir(), file = bundle / "grün.txt", hard = "a, \"b\" @x;ü\\";
    put(bundle.globalFile(), "[common]\napp_international=1\n");
    put(file, "abc");
    const json digests = {{"md5", "900150983cd24fb0d6963f7d28e17f72"},
                          {"ToString", "90x01x50x98x3cxd2x4fxb0xd6x96x3fx7dx28xe1x7fx72x"}};
    put(data + "/reg/folder.ini", kFolder);
    put(data + "/reg/list.ini", "[s]\nk=a, \"b\"c \n");
    const std::string log = data + "/pdforvell-inspect.log";
    const std::tuple<QStringList, int, json> rows[] = {
        // arguments, exit status, answer (a text: none, but it in a message)
        {{"registry", "common"}, 1, "has no key"},
        {{"registry", "common", "s/k", hard.c_str()}, 0, {{"s/k", hard}}},
        {{"registry", "common", "s/k", "-5"}, 0, {{"s/k", "-5"}}},
        {{"registry", "common"}, 0, {{"s/k", "-5"}}},
        {{"registry", "common", "none"}, 1, "has no value"},
        {{"registry", "list"}, 0, {{"s/k", {"a", "bc "}}}},
        {{"registry", "../x", "k", "v"}, 2, "is refused"},
        {{"registry", "folder", "k", "v"}, 1, "cannot be written"},
        {{"language", "None"}, 2, "no language called None"},
        {{"parse", "-A=\"x y\" --b"}, 0, {{"-b", ""}, {"a", "x y"}}},
        {{"digest", file.c_str(), "/none", "--json"}, 1, {{file, digests}, {"/none", {{"error", "cannot be read"}}}}},
        {{"digest", file.c_str(), "--json"}, 0, {{file, digests}}},
        {{"log", "lost"}, 1, {{"IsLogEnable", false}, {"GetLogPath", log}}},
        {{"page", "99", "0", "233"}, 1, {{"GetOpenVipCommandLine", ""}, {"OpenVipGUIPage", false}}},
        {{"locations", "log", "x"}, 2, "do not go together"},
        {{"docter"}, 2, "did you mean doctor?"},
        {{"dooctorr"}, 2, "did you mean doctor?"},
    };
    for (const auto &[arguments, status, answer] : rows) {
        const test::ProcessResult result = bundle.inspect(QStringList{"--json"} + arguments);
        const std::string name = arguments.join(' ').toStdString();
        EXPECT_EQ(result.exitStatus, status) << name;
        EXPECT_EQ(result.errors.empty(), !answer.is_string()) << name << result.errors;
        if (answer.is_string()) {
            EXPECT_NE(result.errors.find(answer.get<std::string>()), std::string::npos) << result.errors;
        } else {
            EXPECT_EQ(json::parse(result.output).at(arguments[0].toStdString()), answer) << name;
        }
    }
    EXPECT_EQ(bundle.inspectJson({"language", "Deutsch"}).at("language").at("GetCurrentLanguage"), "de");
    EXPECT_EQ(bundle.inspect({"--color=always", "switches"}).output.rfind("\033[1m", 0), 0U);
    EXPECT_EQ(bundle.sh("unset LC_ALL; LANG=C.UTF-8 TERM=xterm \"$0\" doctor").output.rfind("doctor\n  ✓ ", 0), 0U);
    EXPECT_EQ(bundle.inspect({"-V"}).output, "pdforvell-inspect " OND_TEST_VERSION "\n");

    put(log, "");
    EXPECT_EQ(bundle.inspectJson({"log", "--", "--help"}).at("log").at("IsLogEnable"), true);
    EXPECT_NE(test::readFile(log).find("]  --help\n"), std::string::npos);
}

TEST(Inspector, SaysWhenNobodyGetsTheAnswer)
{
    const RealBundle bundle;
    for (const QString arguments : {"--help", "-V", "switches", "watch"})
        EXPECT_EQ(bundle.sh("\"$0\" " + arguments + " >/dev/full").exitStatus, 1) << arguments.toStdString();
#ifndef __APPLE__ // where a display is always there
    // The test's environment names a platform without a display, and so does not do without one.
    for (const QString arguments : {"login --dialog", "page 1"})
        EXPECT_EQ(bundle.sh("unset QT_QPA_PLATFORM DISPLAY WAYLAND_DISPLAY; \"$0\" " + arguments).exitStatus, 1)
            << arguments.toStdString() << ": neither aborts nor claims to show something";
    // Ctrl-C at the question for the password gives the terminal its echo back.
    const QString asked = "script -qec \"trap : INT; '$0' login jo@x; stty -a | grep -q ' echo '\" /dev/null";
    EXPECT_EQ(bundle.sh("(sleep 1; printf '\\3') | env --default-signal " + asked).exitStatus, 0);
#endif
}

TEST(Inspector, WritesAManPageAndCompletionsThatWork)
{
    const RealBundle bundle;
    const char *bash =
        "command -v bash >/dev/null || { echo digest; exit; }; \"$0\" --generate complete-bash >bash;"
        "bash -c '. ./bash; COMP_WORDS=(pdforvell-inspect dig); COMP_CWORD=1; _pdforvell_inspect; echo $COMPREPLY'";
    EXPECT_EQ(bundle.sh(bash).output, "digest\n");
    const QString check = "\"$0\" --generate complete-%1 | tee f | grep -q digest; ! command -v %1 || %1 -n f";
    for (const QString shell : {"zsh", "fish"})
        EXPECT_EQ(bundle.sh(check.arg(shell)).exitStatus, 0) << shell.toStdString();
    const auto page =
        bundle.sh("! command -v groff >/dev/null || \"$0\" --generate man | groff -t -man -Tascii -ww -P-c");
    EXPECT_EQ(std::pair(page.exitStatus, page.errors), std::pair(0, ""s)) << "or warnings";
}

TEST(Inspector, PrintsJsonAsTheSchemaSays)
{
    const RealBundle bundle;
    static_cast<void>(bundle.makeUserDataDir());
    put(bundle.globalFile(), "[common]\nenable_log=1\napp_international=1\nx=y\n");
    std::string answers;
    for (const QString words : {"", "report", "digest /bin/sh /none", "parse -a=b", "page 99", "log x",
                                "registry a b c", "language Deutsch", "create-paths"})
        answers += bundle.inspectJson(words.split(' ', Qt::SkipEmptyParts)).dump() + '\n';
    const test::ProcessResult result = bundle.sh(R"(exec /usr/bin/python3 -c '
import json, sys, jsonschema
for line in sys.stdin:
    jsonschema.validate(json.loads(line), json.load(open(sys.argv[1])))
' ")" OND_TEST_SOURCE_DIR "/tools/inspect/pdforvell-inspect.schema.json\"",
                                                 answers);
    if (result.errors.find("ModuleNotFoundError") != std::string::npos)
        GTEST_SKIP() << "needs the Python module jsonschema";
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
}
