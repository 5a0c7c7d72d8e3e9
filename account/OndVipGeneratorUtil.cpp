#include "account/OndVipGeneratorUtil.h"

#include "account/CPDFNewVipSdkWrap.h"
#include "account/CPDFVipSdkAdapter.h"
#include "config/MacGlobalSetting.h"
#include "config/PdfReaderProductInfo_p.h"
#include "paths/MacUtils.h"
#include "runtime/MacGlobalUrl.h"

#include <QDesktopServices>
#include <QUrl>

namespace {

const char *segment(OndVipGeneratorUtil::VIP_GUI_PAGE page)
{
    switch (page) {
    case IPDFVipSdkAdapter::VIP_GUI_PAGE_FORGOT_PASSWORD:
        return "forgot-password";
    case IPDFVipSdkAdapter::VIP_GUI_PAGE_RESET_PASSWORD:
        return "reset-password";
    default:
        return "";
    }
}

} // namespace

QString OndVipGeneratorUtil::GetOpenUrl(VIP_GUI_PAGE page, int showFrom, int functionId, int packageId)
{
    QString url = GetUrlByConfig(page, true);
    if (url.isEmpty())
        return url;
    if (!url.endsWith(QLatin1Char('?')))
        url += QLatin1Char('?');
    const QString certificate = GetUserCertificate();
    if (!certificate.isEmpty())
        url += certificate + QLatin1Char('&');
    return url + QStringLiteral("package_id=%1&").arg(packageId) + GetPublicInfo(showFrom, functionId);
}

QString OndVipGeneratorUtil::GetUrlByConfig(VIP_GUI_PAGE page, bool withLanguage)
{
    QString url = QString::fromStdString(MacGlobalUrl::GetMacInternationalPayWebHost());
    if (url.isEmpty())
        return url;
    if (!url.endsWith(QLatin1Char('/')))
        url += QLatin1Char('/');
    if (withLanguage) {
        const std::string language = MacGlobalSetting::GetCurrentLanguage();
        if (language != "en")
            url += QString::fromStdString(language) + QLatin1Char('/');
    }
    return url + QLatin1String(segment(page));
}

QString OndVipGeneratorUtil::GetPublicInfo(int showFrom, int functionId)
{
    const ProductInfo info = GetProductInfo();
    return QString::asprintf("tid1=%d&tid2=%d&tod1=%d&tod2=%d&iid=%d&tryno=%d&uuid=%s&filever=%d&showfrom=%d"
                             "&function_id=%d&installtime=%d&language=%s",
                             info.tid1, info.tid2, info.tod1, info.tod2, info.iid, info.tryno,
                             info.uuid.toUtf8().constData(), MacUtils::GetBundleVersionInt(true), showFrom, functionId,
                             info.installtime, MacGlobalSetting::GetCurrentLanguage().c_str());
}

OndVipGeneratorUtil::ProductInfo OndVipGeneratorUtil::GetProductInfo()
{
    const ::ProductInfo stored = storedProductInfo();
    const auto installTime = static_cast<int>(stored.installTime);
    const bool fits = installTime == stored.installTime;
    return {stored.tid1, stored.tid2, stored.tod1,  stored.tod2,
            stored.iid,  stored.pid,  stored.tryNo, fits ? installTime : 0,
            stored.uuid};
}

QString OndVipGeneratorUtil::GetUserCertificate()
{
    std::wstring certificate;
    if (!CPDFVipSdkAdapter::GetInstance()->GetUserCertificate(certificate))
        return {};
    return QString::fromStdWString(certificate);
}

bool OndVipGeneratorUtil::GetUserInfo(LocalUserInfo &info)
{
    return CPDFVipSdkAdapter::GetInstance()->GetLocalUserInfo(info);
}

bool OndVipGeneratorUtil::Login(const QString &user, const QString &password, int &errorCode, bool &flag)
{
    return CPDFNewVipSdkWrap::Login(user.toStdWString(), password.toStdWString(), errorCode, flag);
}

bool OndVipGeneratorUtil::OpenBrowser(const QString &url)
{
    return QDesktopServices::openUrl(QUrl(url));
}
