#include "config/MacGlobalSetting.h"

#include "config/MacReg.h"
#include "tests/support/FakePlatform.h"

#include <QLocale>
#include <gtest/gtest.h>
#include <identity.h>
#include <tuple>

namespace fs = std::filesystem;

namespace {

const std::string kList = R"({"languages": [{"code": "de", "english_name": "German", "show_name": "Deutsch"},
    {"code": "at", "english_name": "German", "show_name": "Deutsch"},
    {"code": "en", "english_name": "English", "show_name": "English"}]})";

struct MacGlobalSettingTest : testing::Test
{
    MacGlobalSettingTest() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Austria)); }

    void writeList(const std::string &content) const { test::writeFile(m_list, content); }

    const test::FakeBundle m_bundle;
    const std::string m_list = m_bundle / "Foo.app/Contents/Resources/cfgdata/language.json";
};

} // namespace

TEST_F(MacGlobalSettingTest, DomesticEditionIsChineseWhateverIsStored)
{
    EXPECT_FALSE(MacGlobalSetting::IsEnableDebug());
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "zh");
    EXPECT_FALSE(fs::exists(m_bundle / "support")) << "the registry was looked at";
    writeList(kList);
    MacGlobalSetting::SetCurrentLanguage("English");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "zh");
    test::writeFile(m_bundle.makeUserDataDir() + product::kDebugMarker.str(), "");
    EXPECT_TRUE(MacGlobalSetting::IsEnableDebug()) << "asked anew";
}

TEST_F(MacGlobalSettingTest, ChoiceComesBeforeTheSystemsLanguage)
{
    m_bundle.writeGlobalFile("[common]\napp_international=1\n");
    writeList(kList);
    EXPECT_EQ(MacGlobalSetting::GetSupportLanguageList(), (std::vector<std::string>{"Deutsch", "Deutsch", "English"}));
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "de") << "the first of the same name";
    EXPECT_FALSE(MacReg().open("common", true)) << "not stored";

    MacGlobalSetting::SetCurrentLanguage("English");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "en");
    MacGlobalSetting::SetCurrentLanguage("deutsch");
    EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), "en") << "unknown name, nothing stored";
}

TEST_F(MacGlobalSettingTest, BadListsEndInTheDefaults)
{
    const auto list = [](const std::string &languages) { return "{\"languages\":" + languages + "}"; };
    const std::string good = R"({"code":"de","english_name":"German","show_name":"d"})";
    const std::tuple<const char *, std::string, std::size_t, const char *> rows[] = {
        {"malformed", list("[" + good), 0, "en"},
        {"members missing or of other types", list(R"([{},{"show_name":5,"english_name":["German"]},)" + good + "]"), 1,
         "de"},
        {"broken UTF-8", list("[\"\xff\"," + good + "]"), 0, "en"},
        {"nested too deeply", std::string(100'000, '['), 0, "en"},
        {"too large", list("[" + good + "]" + std::string(1 << 20, ' ')), 0, "en"},
        {"no code, which is stored", list(R"([{"english_name":"English","show_name":""}])"), 1, ""},
    };
    m_bundle.writeGlobalFile("[common]\napp_international=1\n");
    for (const auto &[name, content, count, language] : rows) {
        writeList(content);
        EXPECT_EQ(MacGlobalSetting::GetSupportLanguageList().size(), count) << name;
        MacGlobalSetting::SetCurrentLanguage("");
        EXPECT_EQ(MacGlobalSetting::GetCurrentLanguage(), language) << name;
        std::string result = "kept";
        EXPECT_FALSE(MacGlobalSetting::GetParticularLanguageInfo("code", "xx", "show_name", result)) << name;
        EXPECT_EQ(result, "kept");
    }
}
