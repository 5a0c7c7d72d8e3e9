#include "runtime/MacGlobalUrl.h"

#include "tests/support/FakePlatform.h"

#include <QString>
#include <endpoints.h>
#include <gtest/gtest.h>
#include <identity.h>

using namespace product::endpoints;

using masked::Edition;
using test::FakeBundle;
using U = MacGlobalUrl;

namespace {

struct Setting
{
    const char *name;
    const char *switches;
    bool marker;
    Edition edition; // whose default service host is in force
};

const Setting kSettings[] = {
    {"Domestic", "", false, Edition::domestic},
    {"DomesticAppStoreWithMarker", "app_store=1\n", true, Edition::domestic},
    {"International", "app_international=1\n", false, Edition::international},
    {"InternationalAppStore", "app_international=1\napp_store=1\n", false, Edition::international},
    {"InternationalWithMarker", "app_international=1\n", true, Edition::internationalTest},
};

void PrintTo(const Setting &setting, std::ostream *out)
{
    *out << setting.name;
}

/// The switches are read once per process, hence one setting per case.
class MacGlobalUrlIn : public testing::TestWithParam<Setting>
{
protected:
    MacGlobalUrlIn()
    {
        m_bundle.writeGlobalFile(std::string("[common]\n") + GetParam().switches);
        if (GetParam().marker)
            createMarker();
    }

    void createMarker() const { test::writeFile(m_bundle.makeUserDataDir() + product::kTestServerMarker.str(), ""); }

    const Edition m_edition = GetParam().edition;

private:
    FakeBundle m_bundle;
};

INSTANTIATE_TEST_SUITE_P(, MacGlobalUrlIn, testing::ValuesIn(kSettings),
                         [](const auto &info) { return std::string(info.param.name); });

std::string narrowed(const std::wstring &text)
{
    return QString::fromStdWString(text).toStdString();
}

} // namespace

TEST_P(MacGlobalUrlIn, EditionPackageAndMarkerChoose)
{
    const bool isTest = m_edition == Edition::internationalTest;
    const std::string host = kDefSvrHost[m_edition].str();
    bool flag = !isTest;
    EXPECT_EQ(U::GetDefSvrHost(&flag), host);
    EXPECT_EQ(flag, isTest);
    EXPECT_EQ(narrowed(U::GetDefSvrHostW(nullptr)), host);
    EXPECT_EQ(U::GetOfficialOcrInfoSvrUrl(), host + kOfficialOcrInfoPath[m_edition].str());
    EXPECT_EQ(U::GetVipSvrUserInfoUrl(), kVipSvrHost[m_edition].str() + kVipSvrUserInfoPath[m_edition].str());

    const bool isAppStore = std::string(GetParam().switches).find("app_store") != std::string::npos;
    EXPECT_EQ(U::GetLoginUrl(), (isAppStore ? kLoginAppStoreUrl[m_edition] : kLoginUrl[m_edition]).str());
    EXPECT_EQ(U::GetCloudCNDUrl("a b"), U::GetCloudCNDUrl("") + "a b") << "nothing between, nothing escaped";
    EXPECT_EQ(U::GetCloudCNDUrl(""), U::GetCloudCDNHost());
    EXPECT_EQ(narrowed(U::GetHelpHtmlUrl()), U::GetHelpHtmlUrlA());
    EXPECT_NE(U::GetDefCopyright().find(L'\u00a9'), std::wstring::npos);

    const std::string query = m_edition == Edition::domestic ? "" : "?productId=502";
    EXPECT_EQ(U::GetHassleFreeServiceUrl(), kHassleFreeServiceUrl[m_edition].str() + query);
    EXPECT_EQ(narrowed(U::GetDefFeedbackGroupLinkUrl()), kDefFeedbackGroupLinkUrl[m_edition].str() + query);
}

TEST_P(MacGlobalUrlIn, MarkerIsAskedForOnce)
{
    static_cast<void>(IsInternationalUseTestServer());
    createMarker();
    EXPECT_EQ(U::GetDefSvrHost(nullptr), kDefSvrHost[m_edition].str());
    EXPECT_EQ(IsInternationalUseTestServer(), GetParam().marker) << "whatever the edition";
}
