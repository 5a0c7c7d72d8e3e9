#pragma once

#include "account/IPDFVipSdkAdapter.h"

#include <QString>

/// Addresses of the account's web pages, and short-cuts to the account for its dialogs.
///
/// Static and without state, callable from any thread between CPDFVipSdkAdapter's Initialize() and Uninitialize().
class ONDPDFTOOLUTILS_EXPORT OndVipGeneratorUtil
{
public:
    ///@{

    /// The types of IPDFVipSdkAdapter.
    using VIP_GUI_PAGE = IPDFVipSdkAdapter::VIP_GUI_PAGE;
    using LocalUserInfo = IPDFVipSdkAdapter::LocalUserInfo;
    ///@}

    /// What the account service is told of the product, from key "common" of the emulated registry (MacReg), of which
    /// only the folder is created. What is missing there is 0 or empty.
    struct ProductInfo
    {
        ///@{

        /// Where the installation came from: the numbers of its distribution.
        int tid1 = 0;
        int tid2 = 0;
        int tod1 = 0;
        int tod2 = 0;
        int iid = 0;
        int pid = 0;
        int tryno = 0;
        ///@}
        int installtime = 0; ///< seconds since the Unix epoch
        QString uuid; ///< the installation's id
    };

    /// The whole address of page 8 or 12, with GetPublicInfo() and the session's certificate: a secret. Empty when the
    /// product has no account pages on the web.
    static QString GetOpenUrl(VIP_GUI_PAGE page, int showFrom, int functionId, int packageId);
    /// The page's address without query: the host, the language in use unless that is "en" or not wanted, and the
    /// page's name, which only pages 8 and 12 have. Empty when the product has no account pages on the web.
    static QString GetUrlByConfig(VIP_GUI_PAGE page, bool withLanguage);
    /// Query items that describe the installation: "tid1=3&...&language=en". No value is percent-encoded.
    static QString GetPublicInfo(int showFrom, int functionId);
    /// Read anew on every call.
    static ProductInfo GetProductInfo();

    /// What proves the session to the account's web pages, as query items; empty when there is none.
    static QString GetUserCertificate();
    /// IPDFVipSdkAdapter::GetLocalUserInfo().
    static bool GetUserInfo(LocalUserInfo &info);
    /// CPDFNewVipSdkWrap::Login(): blocks until the service has answered.
    static bool Login(const QString &user, const QString &password, int &errorCode, bool &flag);
    /// Hands an address to the desktop's browser; whether there was one to take it. Needs a QGuiApplication.
    static bool OpenBrowser(const QString &url);
};
