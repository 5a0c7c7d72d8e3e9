#pragma once

#include "config/Export.h"

#include <string>

/// Whether the international edition goes to its test servers: whether a marker file, whose name is a constant of the
/// product build, lies in the user's data folder. Asked of the disk by the first call only, so that creating or
/// removing the file has no effect on a running process. Does not ask for the edition. Callable from any thread.
ONDPDFTOOLUTILS_EXPORT bool IsInternationalUseTestServer();

/// The addresses of the product's services and web pages, chosen by edition: every address that the application goes
/// to.
///
/// Static, callable from any thread; the getters never fail. Each asks for the switches of MacGlobalConfig on every
/// call and keeps nothing. Addresses are whole (scheme, host, path and query); hosts carry their scheme and no trailing
/// "/". Narrow texts are UTF-8, wide ones UTF-32. The values are those of the product build (product/endpoints.h).
class ONDPDFTOOLUTILS_EXPORT MacGlobalUrl
{
public:
    ///@{

    /// The default service host; in the international edition the test host when IsInternationalUseTestServer().
    /// `usesTestServer`, which may be null, receives whether it is the test host; always false in the domestic edition.
    static std::string GetDefSvrHost(bool *usesTestServer);
    static std::wstring GetDefSvrHostW(bool *usesTestServer);
    ///@}

    /// @name Text recognition
    ///@{

    /// On the default service host. The caller chooses between the official and the test service, and
    /// between logged-in users and others ("tourists"); the test host, where it is in force, serves all of them.
    static std::string GetOcrSupportLanguageSvrUrl();
    static std::string GetOfficialOcrInfoSvrUrl();
    static std::string GetTouristOfficialOcrInfoSvrUrl();
    static std::string GetTestOcrInfoSvrUrl();
    static std::string GetTouristTestOcrInfoSvrUrl();
    static std::string GetOfficialOcrUploadSvrUrl();
    static std::string GetTouristOfficialOcrUploadSvrUrl();
    static std::string GetTestOcrUploadSvrUrl();
    static std::string GetTouristTestOcrUploadSvrUrl();
    static std::string GetOfficialOcrRecognizeSvrUrl();
    static std::string GetTouristOfficialOcrRecognizeSvrUrl();
    static std::string GetTestOcrRecognizeSvrUrl();
    static std::string GetTouristTestOcrRecognizeSvrUrl();
    ///@}

    /// The upgrade configuration, on the default service host.
    static std::string GetOfficialUpgradeCfgUrl();

    /// The account server host.
    static std::string GetVipSvrHost();
    /// @name Requests of the account service
    ///@{

    /// On the account server host.
    static std::string GetVipSvrRefreshTokenUrl();
    static std::string GetVipSvrUserInfoUrl();
    /// Deletes the account.
    static std::string GetVipSvrLogoutForeverUrl();
    static std::string GetVipSvrLoginWithEmail();
    static std::string GetVipSvrRegisterWithEmail();
    /// Issues a login certificate.
    static std::string GetVipSvrUserCertificate();
    /// Logs in with a certificate.
    static std::string GetVipSvrLoginByCertificate();
    ///@}

    /// The login page; the app-store package has one of its own in each edition.
    static std::string GetLoginUrl();
    /// The agreement that the user accepts by deleting the account.
    static std::string GetAccountCancellationAgreementUrl();
    /// The host of the international account pages, one for both editions. Empty when the product build has none.
    static std::string GetMacInternationalPayWebHost();

    /// Where telemetry is reported to.
    static std::wstring GetReportUrl();
    /// The content-delivery host of cloud resources.
    static std::string GetCloudCDNHost();
    /// That host followed directly by `name`, which brings its own leading "/".
    static std::string GetCloudCNDUrl(const std::string &name);
    /// The AI chat service host.
    static std::string GetAIChatDefSvrHost();
    /// Its test host.
    static std::string GetAIChatDefSvrHostTest();

    /// The product's web site for this platform.
    static std::wstring GetMacOfficialWebsiteUrl();
    /// The product's web site for all platforms.
    static std::wstring GetOfficeWebsiteUrl();
    /// What is on offer.
    static std::wstring GetActivityUrl();
    /// What a first run shows.
    static std::wstring GetGuideHtmlUrl();
    ///@{

    /// The help.
    static std::wstring GetHelpHtmlUrl();
    static std::string GetHelpHtmlUrlA();
    ///@}

    /// @name Pages that are told the product
    ///@{

    /// "?productId=" + MacGlobalConfig::GetProductId() is appended in the international edition.
    static std::string GetHassleFreeServiceUrl();
    static std::string GetHassleFreeServiceUrl2();
    static std::string GetResMenuQQConnectServerUrl();
    static std::wstring GetDefFeedbackGroupLinkUrl();
    ///@}

    /// The licence agreement.
    static std::wstring GetDefLicenceUrl();
    /// The privacy policy.
    static std::wstring GetDefPrivacyUrl();
    /// The copyright line, a text and no address.
    static std::wstring GetDefCopyright();
};
