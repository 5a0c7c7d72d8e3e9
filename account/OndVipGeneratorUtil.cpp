#include "account/OndVipGeneratorUtil.h"

#include "account/CPDFNewVipSdkWrap.h"
#include "account/CPDFVipSdkAdapter.h"
#include "config/MacGlobalSetting.h"
#include "config/MacReg.h"
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
    MacReg common;
    common.open(QStringLiteral("common"), false);
    const auto value = [&common](const char *name) {
        return common.value(QStringLiteral("product/") + QLatin1String(name));
    };
    ProductInfo info;
    info.tid1 = value("tid1").toInt();
    info.tid2 = value("tid2").toInt();
    info.tod1 = value("tod1").toInt();
    info.tod2 = value("tod2").toInt();
    info.iid = value("iid").toInt();
    info.pid = value("pid").toInt();
    info.tryno = value("tryno").toInt();
    info.installtime = value("installtime").toInt();
    // One that was put in by hand, with commas and no quotes, comes out as a list.
    info.uuid = value("uuid").toStringList().join(QLatin1Char(','));
    return info;
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
