#include "runtime/MacGlobalUrl.h"

#include "config/MacConfigPath_p.h"
#include "config/MacGlobalConfig.h"

#include <atomic>
#include <endpoints.h>
#include <identity.h>
#include <string_view>

using namespace product::endpoints;

using masked::Edition;

namespace {

/// -1 until it is asked.
std::atomic<int> g_nUseTestServer{-1};

Edition edition()
{
    return MacGlobalConfig::isInternationalApp() ? Edition::international : Edition::domestic;
}

masked::View defSvrHost(bool *usesTestServer)
{
    Edition column = edition();
    if (column == Edition::international && IsInternationalUseTestServer())
        column = Edition::internationalTest;
    if (usesTestServer)
        *usesTestServer = column == Edition::internationalTest;
    return kDefSvrHost[column];
}

template <typename Row> constexpr void checkColumns(const Row &)
{
    static_assert(Row::kColumns <= 2, "only the default service host has a text for the test servers");
}

template <typename Row> masked::View inEdition(const Row &row)
{
    checkColumns(row);
    return row[edition()];
}

template <typename Row> std::string narrow(const Row &row)
{
    checkColumns(row);
    return row.str(edition());
}

template <typename Row> std::wstring wide(const Row &row)
{
    checkColumns(row);
    return row.wstr(edition());
}

template <typename Row> std::string onDefSvr(const Row &path)
{
    return joined(defSvrHost(nullptr), inEdition(path));
}

template <typename Row> std::string onVipSvr(const Row &path)
{
    return joined(inEdition(kVipSvrHost), inEdition(path));
}

template <typename String> String withProductId(String url, String (*productId)())
{
    constexpr std::string_view query = "?productId=";
    if (MacGlobalConfig::isInternationalApp())
        url.append(query.begin(), query.end()).append(productId());
    return url;
}

template <typename Row> std::string withProductId(const Row &row)
{
    return withProductId(narrow(row), &MacGlobalConfig::GetProductId);
}

template <typename Row> std::wstring withProductIdW(const Row &row)
{
    return withProductId(wide(row), &MacGlobalConfig::GetProductIdW);
}

} // namespace

bool IsInternationalUseTestServer()
{
    int uses = g_nUseTestServer.load(std::memory_order_relaxed);
    if (uses == -1) {
        const MacConfigPath *paths = configPathOrNull();
        uses = paths && paths->IsAppDataFileExist(product::kTestServerMarker.str()) ? 1 : 0;
        g_nUseTestServer.store(uses, std::memory_order_relaxed);
    }
    return uses == 1;
}

// One line per getter, so that the table can be read beside its rows.
// clang-format off

std::string MacGlobalUrl::GetDefSvrHost(bool *usesTestServer) { return defSvrHost(usesTestServer).str(); }
std::wstring MacGlobalUrl::GetDefSvrHostW(bool *usesTestServer) { return defSvrHost(usesTestServer).wstr(); }

std::string MacGlobalUrl::GetOcrSupportLanguageSvrUrl() { return onDefSvr(kOcrSupportLanguagePath); }
std::string MacGlobalUrl::GetOfficialOcrInfoSvrUrl() { return onDefSvr(kOfficialOcrInfoPath); }
std::string MacGlobalUrl::GetTouristOfficialOcrInfoSvrUrl() { return onDefSvr(kTouristOfficialOcrInfoPath); }
std::string MacGlobalUrl::GetTestOcrInfoSvrUrl() { return onDefSvr(kTestOcrInfoPath); }
std::string MacGlobalUrl::GetTouristTestOcrInfoSvrUrl() { return onDefSvr(kTouristTestOcrInfoPath); }
std::string MacGlobalUrl::GetOfficialOcrUploadSvrUrl() { return onDefSvr(kOfficialOcrUploadPath); }
std::string MacGlobalUrl::GetTouristOfficialOcrUploadSvrUrl() { return onDefSvr(kTouristOfficialOcrUploadPath); }
std::string MacGlobalUrl::GetTestOcrUploadSvrUrl() { return onDefSvr(kTestOcrUploadPath); }
std::string MacGlobalUrl::GetTouristTestOcrUploadSvrUrl() { return onDefSvr(kTouristTestOcrUploadPath); }
std::string MacGlobalUrl::GetOfficialOcrRecognizeSvrUrl() { return onDefSvr(kOfficialOcrRecognizePath); }
std::string MacGlobalUrl::GetTouristOfficialOcrRecognizeSvrUrl() { return onDefSvr(kTouristOfficialOcrRecognizePath); }
std::string MacGlobalUrl::GetTestOcrRecognizeSvrUrl() { return onDefSvr(kTestOcrRecognizePath); }
std::string MacGlobalUrl::GetTouristTestOcrRecognizeSvrUrl() { return onDefSvr(kTouristTestOcrRecognizePath); }
std::string MacGlobalUrl::GetOfficialUpgradeCfgUrl() { return onDefSvr(kOfficialUpgradeCfgPath); }

std::string MacGlobalUrl::GetVipSvrHost() { return narrow(kVipSvrHost); }
std::string MacGlobalUrl::GetVipSvrRefreshTokenUrl() { return onVipSvr(kVipSvrRefreshTokenPath); }
std::string MacGlobalUrl::GetVipSvrUserInfoUrl() { return onVipSvr(kVipSvrUserInfoPath); }
std::string MacGlobalUrl::GetVipSvrLogoutForeverUrl() { return onVipSvr(kVipSvrLogoutForeverPath); }
std::string MacGlobalUrl::GetVipSvrLoginWithEmail() { return onVipSvr(kVipSvrLoginWithEmailPath); }
std::string MacGlobalUrl::GetVipSvrRegisterWithEmail() { return onVipSvr(kVipSvrRegisterWithEmailPath); }
std::string MacGlobalUrl::GetVipSvrUserCertificate() { return onVipSvr(kVipSvrUserCertificatePath); }
std::string MacGlobalUrl::GetVipSvrLoginByCertificate() { return onVipSvr(kVipSvrLoginByCertificatePath); }

std::string MacGlobalUrl::GetLoginUrl()
{
    return MacGlobalConfig::IsAppleStorePKG() ? narrow(kLoginAppStoreUrl) : narrow(kLoginUrl);
}
std::string MacGlobalUrl::GetAccountCancellationAgreementUrl() { return narrow(kAccountCancellationAgreementUrl); }
std::string MacGlobalUrl::GetMacInternationalPayWebHost() { return narrow(kMacInternationalPayWebHost); }

std::wstring MacGlobalUrl::GetReportUrl() { return wide(kReportUrl); }
std::string MacGlobalUrl::GetCloudCDNHost() { return narrow(kCloudCdnHost); }
std::string MacGlobalUrl::GetCloudCNDUrl(const std::string &name) { return GetCloudCDNHost().append(name); }
std::string MacGlobalUrl::GetAIChatDefSvrHost() { return narrow(kAiChatDefSvrHost); }
std::string MacGlobalUrl::GetAIChatDefSvrHostTest() { return narrow(kAiChatDefSvrTestHost); }

std::wstring MacGlobalUrl::GetMacOfficialWebsiteUrl() { return wide(kMacOfficialWebsiteUrl); }
std::wstring MacGlobalUrl::GetOfficeWebsiteUrl() { return wide(kOfficeWebsiteUrl); }
std::wstring MacGlobalUrl::GetActivityUrl() { return wide(kActivityUrl); }
std::wstring MacGlobalUrl::GetGuideHtmlUrl() { return wide(kGuideHtmlUrl); }
std::wstring MacGlobalUrl::GetHelpHtmlUrl() { return wide(kHelpHtmlUrl); }
std::string MacGlobalUrl::GetHelpHtmlUrlA() { return narrow(kHelpHtmlUrl); }

std::string MacGlobalUrl::GetHassleFreeServiceUrl() { return withProductId(kHassleFreeServiceUrl); }
std::string MacGlobalUrl::GetHassleFreeServiceUrl2() { return withProductId(kHassleFreeServiceUrl2); }
std::string MacGlobalUrl::GetResMenuQQConnectServerUrl() { return withProductId(kResMenuQqConnectServerUrl); }
std::wstring MacGlobalUrl::GetDefFeedbackGroupLinkUrl() { return withProductIdW(kDefFeedbackGroupLinkUrl); }

std::wstring MacGlobalUrl::GetDefLicenceUrl() { return wide(kDefLicenceUrl); }
std::wstring MacGlobalUrl::GetDefPrivacyUrl() { return wide(kDefPrivacyUrl); }
std::wstring MacGlobalUrl::GetDefCopyright() { return wide(kDefCopyright); }
// clang-format on
