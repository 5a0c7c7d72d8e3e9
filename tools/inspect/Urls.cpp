#include "tools/inspect/Urls.h"

#include "config/MacGlobalConfig.h"
#include "runtime/CommonFileLog.h"
#include "runtime/MacGlobalUrl.h"

namespace inspect {

namespace {

std::string utf8(const std::string &text)
{
    return text;
}

std::string utf8(const std::wstring &text)
{
    return CommonFileLog::wstringToString(text);
}

template <auto Getter> std::string row()
{
    return utf8(Getter());
}

struct Address
{
    const char *name;
    std::string (*answer)();
};

constexpr Address kAddresses[] = {
    {"GetOcrSupportLanguageSvrUrl", row<MacGlobalUrl::GetOcrSupportLanguageSvrUrl>},
    {"GetOfficialOcrInfoSvrUrl", row<MacGlobalUrl::GetOfficialOcrInfoSvrUrl>},
    {"GetTouristOfficialOcrInfoSvrUrl", row<MacGlobalUrl::GetTouristOfficialOcrInfoSvrUrl>},
    {"GetTestOcrInfoSvrUrl", row<MacGlobalUrl::GetTestOcrInfoSvrUrl>},
    {"GetTouristTestOcrInfoSvrUrl", row<MacGlobalUrl::GetTouristTestOcrInfoSvrUrl>},
    {"GetOfficialOcrUploadSvrUrl", row<MacGlobalUrl::GetOfficialOcrUploadSvrUrl>},
    {"GetTouristOfficialOcrUploadSvrUrl", row<MacGlobalUrl::GetTouristOfficialOcrUploadSvrUrl>},
    {"GetTestOcrUploadSvrUrl", row<MacGlobalUrl::GetTestOcrUploadSvrUrl>},
    {"GetTouristTestOcrUploadSvrUrl", row<MacGlobalUrl::GetTouristTestOcrUploadSvrUrl>},
    {"GetOfficialOcrRecognizeSvrUrl", row<MacGlobalUrl::GetOfficialOcrRecognizeSvrUrl>},
    {"GetTouristOfficialOcrRecognizeSvrUrl", row<MacGlobalUrl::GetTouristOfficialOcrRecognizeSvrUrl>},
    {"GetTestOcrRecognizeSvrUrl", row<MacGlobalUrl::GetTestOcrRecognizeSvrUrl>},
    {"GetTouristTestOcrRecognizeSvrUrl", row<MacGlobalUrl::GetTouristTestOcrRecognizeSvrUrl>},
    {"GetOfficialUpgradeCfgUrl", row<MacGlobalUrl::GetOfficialUpgradeCfgUrl>},
    {"GetVipSvrHost", row<MacGlobalUrl::GetVipSvrHost>},
    {"GetVipSvrRefreshTokenUrl", row<MacGlobalUrl::GetVipSvrRefreshTokenUrl>},
    {"GetVipSvrUserInfoUrl", row<MacGlobalUrl::GetVipSvrUserInfoUrl>},
    {"GetVipSvrLogoutForeverUrl", row<MacGlobalUrl::GetVipSvrLogoutForeverUrl>},
    {"GetVipSvrLoginWithEmail", row<MacGlobalUrl::GetVipSvrLoginWithEmail>},
    {"GetVipSvrRegisterWithEmail", row<MacGlobalUrl::GetVipSvrRegisterWithEmail>},
    {"GetVipSvrUserCertificate", row<MacGlobalUrl::GetVipSvrUserCertificate>},
    {"GetVipSvrLoginByCertificate", row<MacGlobalUrl::GetVipSvrLoginByCertificate>},
    {"GetLoginUrl", row<MacGlobalUrl::GetLoginUrl>},
    {"GetAccountCancellationAgreementUrl", row<MacGlobalUrl::GetAccountCancellationAgreementUrl>},
    {"GetMacInternationalPayWebHost", row<MacGlobalUrl::GetMacInternationalPayWebHost>},
    {"GetReportUrl", row<MacGlobalUrl::GetReportUrl>},
    {"GetCloudCDNHost", row<MacGlobalUrl::GetCloudCDNHost>},
    {"GetAIChatDefSvrHost", row<MacGlobalUrl::GetAIChatDefSvrHost>},
    {"GetAIChatDefSvrHostTest", row<MacGlobalUrl::GetAIChatDefSvrHostTest>},
    {"GetMacOfficialWebsiteUrl", row<MacGlobalUrl::GetMacOfficialWebsiteUrl>},
    {"GetOfficeWebsiteUrl", row<MacGlobalUrl::GetOfficeWebsiteUrl>},
    {"GetActivityUrl", row<MacGlobalUrl::GetActivityUrl>},
    {"GetGuideHtmlUrl", row<MacGlobalUrl::GetGuideHtmlUrl>},
    {"GetHelpHtmlUrl", row<MacGlobalUrl::GetHelpHtmlUrl>},
    {"GetHelpHtmlUrlA", row<MacGlobalUrl::GetHelpHtmlUrlA>},
    {"GetHassleFreeServiceUrl", row<MacGlobalUrl::GetHassleFreeServiceUrl>},
    {"GetHassleFreeServiceUrl2", row<MacGlobalUrl::GetHassleFreeServiceUrl2>},
    {"GetResMenuQQConnectServerUrl", row<MacGlobalUrl::GetResMenuQQConnectServerUrl>},
    {"GetDefFeedbackGroupLinkUrl", row<MacGlobalUrl::GetDefFeedbackGroupLinkUrl>},
    {"GetDefLicenceUrl", row<MacGlobalUrl::GetDefLicenceUrl>},
    {"GetDefPrivacyUrl", row<MacGlobalUrl::GetDefPrivacyUrl>},
    {"GetDefCopyright", row<MacGlobalUrl::GetDefCopyright>},
};

} // namespace

Json urls()
{
    bool usesTestServer = false;
    Json answers = {{"isInternationalApp", MacGlobalConfig::isInternationalApp()},
                    {"IsAppleStorePKG", MacGlobalConfig::IsAppleStorePKG()},
                    {"GetDefSvrHost", MacGlobalUrl::GetDefSvrHost(&usesTestServer)},
                    {"GetDefSvrHostW", utf8(MacGlobalUrl::GetDefSvrHostW(nullptr))},
                    {"usesTestServer", usesTestServer},
                    {"GetCloudCNDUrl", MacGlobalUrl::GetCloudCNDUrl("")}};
    for (const Address &address : kAddresses)
        answers[address.name] = address.answer();
    return answers;
}

} // namespace inspect
