#include "config/ProductCfgUtil.h"

#include "config/IniFile.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "config/ServerFile.h"
#include "paths/PathUtils.h"
#include "runtime/MacGlobalUrl.h"

#include <identity.h>

template class SingleTon<ProductCfgUtil>;

namespace {

QString textOf(masked::View text)
{
    return QString::fromStdString(text.str());
}

/// What stands where the file has no text. Made on first use: loading the library reads no file.
struct DefaultTexts
{
    const QString DEF_PRODUCT_NAME = QString::fromStdWString(MacGlobalConfig::GetProductNameW(true));
    const QString DEF_ASSOCIATE_PREFIX = QString::fromStdWString(MacGlobalConfig::GetProductNamePrefixW());
    const QString DEF_OFFICAL_URL = QString::fromStdWString(MacGlobalUrl::GetOfficeWebsiteUrl());
    const QString DEF_LICENCE_URL = QString::fromStdWString(MacGlobalUrl::GetDefLicenceUrl());
    const QString DEF_PRIVACY_URL = QString::fromStdWString(MacGlobalUrl::GetDefPrivacyUrl());
    const QString DEF_COPYRIGHT = QString::fromStdWString(MacGlobalUrl::GetDefCopyright());
    const QString associateExe = textOf(product::kAssociateExe);
    const QString associateBackup = textOf(product::kAssociateBackup);
    const QString serviceName = textOf(product::kServiceName);
    const QString regName = textOf(product::kRegName);
    const QString readerExe = textOf(product::kReaderExe);
    const QString cacheDir = textOf(product::kCacheDir);
    const QString reportId = textOf(product::kReportId);
    const QString reportPrefix = textOf(product::kReportPrefix);
    const QString guidIndependent = textOf(product::kGuidIndependent);
    const QString guid = textOf(product::kGuid);
};

const DefaultTexts &def()
{
    static const DefaultTexts texts;
    return texts;
}

QString resource(const char *name)
{
    return QString::fromStdString(MacConfigPath::GetInstance()->GetAppConfigPath(name));
}

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

} // namespace

ProductCfgUtil::ProductCfgUtil()
    : m_settings(ini::readable(resource("cfgdata/componentConfig.ini")), QSettings::IniFormat),
      m_parser(ProductCfgParser::Reader)
{
    m_settings.setIniCodec("UTF-8");
    initEdition();
    initSpecialEditionCfg();
}

void ProductCfgUtil::initEdition()
{
    m_edition = m_settings.value(QStringLiteral("product/product_edition"), m_edition).toInt();
    const QString serverFile = serverFilePath();
    if (!PathUtils::IsFilePathExist(serverFile))
        return;
    const QSettings server(ini::readable(serverFile), QSettings::IniFormat);
    m_edition = server.value(QStringLiteral("Common/Edition"), m_edition).toInt();
}

void ProductCfgUtil::initSpecialEditionCfg()
{
    m_parser.Init(static_cast<PDFEdition::EDITION>(m_edition), resource("cfgdata/componentConfig.dat"),
                  QStringLiteral("software/%1").arg(getInstallRegName()));
}

QString ProductCfgUtil::getStringValue(const QString &section, const QString &key, const QString &defaultValue) const
{
    return m_parser.GetStringValue(section, key, ini::text(m_settings, section, key, defaultValue));
}

int ProductCfgUtil::getIntValue(const QString &section, const QString &key, int defaultValue) const
{
    const int value = m_settings.value(section + QLatin1Char('/') + key, defaultValue).toInt();
    return m_parser.GetIntValue(section, key, value);
}

QString ProductCfgUtil::text(const char *section, const char *key, const QString &defaultValue) const
{
    return getStringValue(latin(section), latin(key), defaultValue);
}

int ProductCfgUtil::number(const char *section, const char *key, int defaultValue) const
{
    return getIntValue(latin(section), latin(key), defaultValue);
}

int ProductCfgUtil::getProductEdition() const
{
    return m_edition;
}

// One line per getter, so that the keys can be read as a table.
// clang-format off
QString ProductCfgUtil::getProductName() const { return text("product", "product_name", def().DEF_PRODUCT_NAME); }
QString ProductCfgUtil::getTopLeftTitle() const { return text("title", "top_left_title", def().DEF_PRODUCT_NAME); }
QString ProductCfgUtil::getWindowTitle() const { return text("title", "window_title", def().DEF_PRODUCT_NAME); }
QString ProductCfgUtil::getAssociateExe() const { return text("associate", "executor", def().associateExe); }
QString ProductCfgUtil::getAssociateDesc() const { return text("associate", "description", def().DEF_PRODUCT_NAME); }
QString ProductCfgUtil::getAssociateBackDesc() const { return text("associate", "backup", def().associateBackup); }
QString ProductCfgUtil::getAssociateDlgPrefix() const { return text("associate_dialog", "product_name", def().DEF_ASSOCIATE_PREFIX); }
QString ProductCfgUtil::getOfficalUrl() const { return text("about", "offical_url", def().DEF_OFFICAL_URL); }
QString ProductCfgUtil::getLicenceUrl() const { return text("about", "licence_url", def().DEF_LICENCE_URL); }
QString ProductCfgUtil::getPrivacy() const { return text("about", "privacy_url", def().DEF_PRIVACY_URL); }
QString ProductCfgUtil::getCopyRight() const { return text("about", "copyright", def().DEF_COPYRIGHT); }
bool ProductCfgUtil::isTolvaProduct() const { return number("product", "is_tv_product", 0) != 0; }
bool ProductCfgUtil::getHelpEnable() const { return number("product", "is_help_enable", 1) != 0; }
int ProductCfgUtil::getVipId() const { return number("product", "vip_id", 13); }
QString ProductCfgUtil::getServiceName() const { return text("product", "service_name", def().serviceName); }
QString ProductCfgUtil::getProductGUID() const { return text("product", "guid", getDefProductGUID()); }
QString ProductCfgUtil::getInstallRegName() const { return text("product", "reg_name", def().regName); }
QString ProductCfgUtil::getUninstallRegName() const { return text("product", "uninstall_key", getInstallRegName()); }
QString ProductCfgUtil::getReaderExeName() const { return text("file", "reader_name", def().readerExe); }
QString ProductCfgUtil::getCacheDirName() const { return text("file", "cache_dir", def().cacheDir); }
QString ProductCfgUtil::getInternationReportId() const { return text("internation", "report_id", def().reportId); }
QString ProductCfgUtil::getInternationReportPrefix() const { return text("internation", "report_prefix", def().reportPrefix); }
// clang-format on

QStringList ProductCfgUtil::getAssociateAvoid() const
{
    return text("associate", "avoid", QString()).split(QLatin1Char('|'), Qt::SkipEmptyParts, Qt::CaseSensitive);
}

QString ProductCfgUtil::getProductHost() const
{
    bool isForced = false;
    const QString host = QString::fromStdString(MacGlobalUrl::GetDefSvrHost(&isForced));
    return isForced ? host : text("product", "host", host);
}

QString ProductCfgUtil::getDefProductGUID() const
{
    const bool hasItsOwn = m_edition == PDFEdition::Independent && !isTolvaProduct();
    return hasItsOwn ? def().guidIndependent : def().guid;
}

void ProductCfgUtil::checkAssertEdition(PDFEdition::EDITION edition) const
{
    static const PDFEdition::EDITION first = edition;
    Q_ASSERT(edition == first);
}
