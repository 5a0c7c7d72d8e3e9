#pragma once

#include "config/EditionTexts_p.h"

/// Every address that this product build goes to. Data only: a product build replaces this file (OND_PRODUCT_DIR).
///
/// A row is named after the getter that answers it. Its columns: domestic edition, international edition, and for the
/// default service host, on which the rest of that service stands, international edition on the test servers. A row
/// that names fewer has its last text for the rest. A ...Host carries its scheme and no trailing "/"; a ...Path is
/// appended to the host above it; all else are whole addresses.
namespace product::endpoints {

using masked::byEdition;

// Default service: text recognition and upgrades.
inline constexpr auto kDefSvrHost =
    byEdition("https://svr.vantpdf.example", "https://svr.pdforvell.example", "https://svr-test.pdforvell.example");
inline constexpr auto kOcrSupportLanguagePath = byEdition("/ocr/v2/languages");
inline constexpr auto kOfficialOcrInfoPath = byEdition("/ocr/v2/info");
inline constexpr auto kTouristOfficialOcrInfoPath = byEdition("/ocr/v2/guest/info");
inline constexpr auto kTestOcrInfoPath = byEdition("/ocr-test/v2/info");
inline constexpr auto kTouristTestOcrInfoPath = byEdition("/ocr-test/v2/guest/info");
inline constexpr auto kOfficialOcrUploadPath = byEdition("/ocr/v2/upload");
inline constexpr auto kTouristOfficialOcrUploadPath = byEdition("/ocr/v2/guest/upload");
inline constexpr auto kTestOcrUploadPath = byEdition("/ocr-test/v2/upload");
inline constexpr auto kTouristTestOcrUploadPath = byEdition("/ocr-test/v2/guest/upload");
inline constexpr auto kOfficialOcrRecognizePath = byEdition("/ocr/v2/recognize");
inline constexpr auto kTouristOfficialOcrRecognizePath = byEdition("/ocr/v2/guest/recognize");
inline constexpr auto kTestOcrRecognizePath = byEdition("/ocr-test/v2/recognize");
inline constexpr auto kTouristTestOcrRecognizePath = byEdition("/ocr-test/v2/guest/recognize");
inline constexpr auto kOfficialUpgradeCfgPath = byEdition("/upgrade/v1/config");

// Account service.
inline constexpr auto kVipSvrHost = byEdition("https://account.vantpdf.example", "https://account.pdforvell.example");
inline constexpr auto kVipSvrRefreshTokenPath = byEdition("/v3/token/refresh", "/intl/v3/token/refresh");
inline constexpr auto kVipSvrUserInfoPath = byEdition("/v3/user/info", "/intl/v3/user/info");
inline constexpr auto kVipSvrLogoutForeverPath = byEdition("/v3/user/delete");
inline constexpr auto kVipSvrLoginWithEmailPath = byEdition("/v3/login/email", "/intl/v3/login/email");
inline constexpr auto kVipSvrRegisterWithEmailPath = byEdition("/v3/register/email", "/intl/v3/register/email");
inline constexpr auto kVipSvrUserCertificatePath = byEdition("/v3/certificate/issue", "/intl/v3/certificate/issue");
inline constexpr auto kVipSvrLoginByCertificatePath = byEdition("/v3/login/certificate", "/intl/v3/login/certificate");

// Account pages.
inline constexpr auto kLoginUrl =
    byEdition("https://www.vantpdf.example/account/login", "https://www.pdforvell.example/account/login");
inline constexpr auto kLoginAppStoreUrl = byEdition("https://www.vantpdf.example/account/login-appstore",
                                                    "https://www.pdforvell.example/account/login-appstore");
inline constexpr auto kAccountCancellationAgreementUrl = byEdition(
    "https://www.vantpdf.example/legal/account-deletion", "https://www.pdforvell.example/legal/account-deletion");
// What the account helper shows, on the account service. "%1" is the installation's try number. A ...Channel... row is
// for try numbers 3070 and 5.
inline constexpr auto kVipPage3Path = masked::text("/page/renew?tryno=%1");
inline constexpr auto kVipPage3ChannelPath = masked::text("/page/channel/renew?tryno=%1");
inline constexpr auto kVipPage4Path = masked::text("/page/upgrade?tryno=%1");
inline constexpr auto kVipPage4ChannelPath = masked::text("/page/channel/upgrade?tryno=%1");
inline constexpr auto kVipPage5Path = masked::text("/page/orders?tryno=%1");
inline constexpr auto kVipPage5ChannelPath = masked::text("/page/channel/orders?tryno=%1");
inline constexpr auto kVipPage10Path = masked::text("/page/buy?tryno=%1");
inline constexpr auto kVipPage10ChannelPath = masked::text("/page/channel/buy?tryno=%1");
inline constexpr auto kVipPage10Fid233Path = masked::text("/page/buy-conversion?tryno=%1");
inline constexpr auto kVipPage10Fid233ChannelPath = masked::text("/page/channel/buy-conversion?tryno=%1");
inline constexpr auto kVipPage11Path = masked::text("/page/redeem?tryno=%1");
inline constexpr auto kVipPage11ChannelPath = masked::text("/page/channel/redeem?tryno=%1");
/// May be empty: the product then has no account pages on the web.
inline constexpr auto kMacInternationalPayWebHost = byEdition("https://pay.pdforvell.example");

// Other services.
inline constexpr auto kReportUrl =
    byEdition("https://report.vantpdf.example/v1/events", "https://report.pdforvell.example/v1/events");
inline constexpr auto kCloudCdnHost = byEdition("https://cdn.vantpdf.example", "https://cdn.pdforvell.example");
inline constexpr auto kAiChatDefSvrHost = byEdition("https://chat.vantpdf.example", "https://chat.pdforvell.example");
inline constexpr auto kAiChatDefSvrTestHost =
    byEdition("https://chat-test.vantpdf.example", "https://chat-test.pdforvell.example");

// Web pages of the product.
inline constexpr auto kMacOfficialWebsiteUrl =
    byEdition("https://www.vantpdf.example/mac/", "https://www.pdforvell.example/mac/");
inline constexpr auto kOfficeWebsiteUrl = byEdition("https://www.vantpdf.example/", "https://www.pdforvell.example/");
inline constexpr auto kActivityUrl =
    byEdition("https://www.vantpdf.example/activity", "https://www.pdforvell.example/offers");
inline constexpr auto kGuideHtmlUrl =
    byEdition("https://www.vantpdf.example/mac/guide", "https://www.pdforvell.example/mac/guide");
inline constexpr auto kHelpHtmlUrl =
    byEdition("https://help.vantpdf.example/mac/", "https://help.pdforvell.example/mac/");

// Pages that are told the product id in the international edition, and therefore carry no query of their own.
inline constexpr auto kHassleFreeServiceUrl =
    byEdition("https://service.vantpdf.example/assist", "https://service.pdforvell.example/assist");
inline constexpr auto kHassleFreeServiceUrl2 =
    byEdition("https://service.vantpdf.example/assist/more", "https://service.pdforvell.example/assist/more");
inline constexpr auto kResMenuQqConnectServerUrl =
    byEdition("https://service.vantpdf.example/contact/qq", "https://service.pdforvell.example/contact");
inline constexpr auto kDefFeedbackGroupLinkUrl =
    byEdition("https://service.vantpdf.example/feedback", "https://service.pdforvell.example/feedback");

// Legal texts.
inline constexpr auto kDefLicenceUrl =
    byEdition("https://www.vantpdf.example/legal/licence", "https://www.pdforvell.example/legal/licence");
inline constexpr auto kDefPrivacyUrl =
    byEdition("https://www.vantpdf.example/legal/privacy", "https://www.pdforvell.example/legal/privacy");
inline constexpr auto kDefCopyright = byEdition("版权所有 © Vant PDF", "Copyright © PDF Orvell. All rights reserved.");

} // namespace product::endpoints
