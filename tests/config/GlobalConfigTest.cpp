#include "config/MacGlobalConfig.h"

#include "config/GlobalConfigFile.h"
#include "config/MacGlobalSetting.h"
#include "config/MacReg.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/FakePlatform.h"

#include <QLocale>
#include <gtest/gtest.h>
#include <identity.h>
#include <limits>
#include <tuple>

namespace fs = std::filesystem;

const std::string kList = R"({"languages": [{}, {"code": "x", "english_name": ["German"], "show_name": 5},
    {"code": "de", "english_name": "German", "show_name": "Deutsch"},
    {"code": "at", "english_name": "German", "show_name": "Deutsch"},
    {"code": "en", "english_name": "English", "show_name": "English"}, {"show_name": "of no code"}]})";

struct GlobalConfig : testing::Test
{
    const test::FakeBundle m_bundle;
    const std::string m_list = m_bundle / "Foo.app/Contents/Resources/cfgdata/language.json";
};

TEST_F(GlobalConfig, OnlyOneIsOnAndIsReadOnce)
{
    for (const char *settings : {"enable_log=-1\nenable_sbx=2\napp_store=1\napp_international=0x1\ngroup_name=first",
                                 "enable_log=1\nenable_sbx=1\napp_store=0\napp_international=0\ngroup_name=second"}) {
        m_bundle.writeGlobalFile(std::string("[common]\n") + settings);
        EXPECT_FALSE(MacGlobalConfig::IsEnableFileLog()) << "-1 counts as read";
        EXPECT_FALSE(MacGlobalConfig::IsEnableSandBox());
        EXPECT_TRUE(MacGlobalConfig::IsAppleStorePKG());
        EXPECT_TRUE(MacGlobalConfig::isInternationalApp());
        EXPECT_EQ(MacGlobalConfig::GetShareGroupName(), "first");
    }
}

TEST_F(GlobalConfig, ConfigurationGoesToTheLogInTheGroupContainer)
{
    m_bundle.writeGlobalFile("[common]\nenable_log=1\nenable_sbx=1\napp_international=0\ngroup_name=group.x\n");
    test::fakePlatform().groupContainers["group.x"] = m_bundle / "container";
    fs::create_directory(m_bundle / "container");
    MacGlobalConfig::OutputConfigLog();
    EXPECT_EQ(test::logMessages(m_bundle / "container/foo.log"),
              "sbx:1\napp_store:0\ngroup_name:group.x\nfunc_host:" + MacGlobalUrl::GetDefSvrHost(nullptr)
                  + "\nvip_host:" + MacGlobalUrl::GetVipSvrHost() + "\nintl_app:1\nsandbox:0\n");
}

TEST_F(GlobalConfig, BadFilesEndInTheDefaults)
{
    const std::string good = "[common]\nnumber=1\ngroup_name=g\n";
    const std::tuple<const char *, std::string, long, std::string> rows[] = {
        // content, "number" asked with the default 7, "group_name" asked with the default "d"
        {"no number, empty text", "[common]\nnumber=yes\ngroup_name=\n", 0, "d"},
        {"malformed line at the end", good + "garbage\n", 7, "d"},
        {"byte-order mark", "\xEF\xBB\xBF" + good, 1, "g"},
        {"CRLF", "[common]\r\nnumber=1\r\ngroup_name=g\r\n", 1, "g"},
        {"zero, where the parser would end", good + '\0', 7, "d"},
        {"past 64 bits", "[common]\nnumber=99999999999999999999999\n", std::numeric_limits<long>::max(), "d"},
        {"twice", "[common]\nnumber=1\nnumber=2\ngroup_name=a\ngroup_name=b\n", 1, "a\nb"},
        {"too large", good + std::string(1U << 20, '\n'), 7, "d"},
    };
    const std::string path = GetDatPath();
    EXPECT_FALSE(isPathExist(path));
    EXPECT_EQ(GetIntValueFromMKDat("common", "number", 7), 7) << "missing";
    for (const auto &[name, content, number, text] : rows) {
        m_bundle.writeGlobalFile(content);
        EXPECT_EQ(GetIntValueFromMKDat("common", "number", 7), number) << name;
        EXPECT_EQ(GetStrValueFromMKDat("common", "group_name", "d"), text) << name;
    }
    fs::remove(path);
    fs::create_directory(path);
    EXPECT_TRUE(isPathExist(path)) << "whatever it is";
    EXPECT_EQ(MacGlobalConfig::GetShareGroupName(), product::kDefaultGroupName.str());
    const std::string dangling = m_bundle / "dangling";
    fs::create_symlink(m_bundle / "nothing", dangling);
    for (const std::string &none : {dangling, std::string(), path + '\0', m_bundle / std::string(5000, 'x')})
        EXPECT_FALSE(isPathExist(none)) << none;
}

TEST_F(GlobalConfig, DomesticEditionSpeaksChineseWhateverIsStored)
{
    EXPECT_FALSE(MacGlobalSetting::IsEnableDebug());
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "zh");
    EXPECT_FALSE(fs::exists(m_bundle / "support")) << "the registry was looked at";
    test::writeFile(m_list, kList);
    MacGlobalSetting::SetCurrentLanguage("English");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "zh");
    test::writeFile(m_bundle.makeUserDataDir() + product::kDebugMarker.str(), "");
    EXPECT_TRUE(MacGlobalSetting::IsEnableDebug()) << "asked anew";
}

TEST_F(GlobalConfig, ChosenLanguageComesBeforeTheSystems)
{
    m_bundle.writeGlobalFile("[common]\napp_international=1\n");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Austria));
    test::writeFile(m_list, kList + "garbage");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "en") << "there is no list";
    test::writeFile(m_list, kList);
    EXPECT_EQ(MacGlobalSetting::GetSupportLanguageList(),
              (std::vector<std::string>{"Deutsch", "Deutsch", "English", "of no code"}));
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "de") << "the first of the same name";
    EXPECT_FALSE(MacReg().open("common", true)) << "not stored";

    MacGlobalSetting::SetCurrentLanguage("English");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "en");
    MacGlobalSetting::SetCurrentLanguage("deutsch");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "en") << "unknown name, nothing stored";
    MacGlobalSetting::SetCurrentLanguage("of no code");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "") << "which is stored";
    std::string result = "kept";
    EXPECT_FALSE(MacGlobalSetting::GetParticularLanguageInfo("code", "xx", "show_name", result));
    EXPECT_EQ(result, "kept");
}
