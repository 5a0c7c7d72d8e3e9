#include "config/ProductCfgUtil.h"

#include "config/AccountId_p.h"
#include "config/Locations_p.h"
#include "config/MacGlobalConfig.h"
#include "config/ini/IniStore_p.h"
#include "runtime/MacGlobalUrl.h"

#include <QHash>
#include <identity.h>
#include <mutex>
#include <optional>

template class SingleTon<ProductCfgUtil>;

namespace {

QString text(masked::View masked)
{
    return QString::fromStdString(masked.str());
}

QString text(const std::wstring &wide)
{
    return QString::fromStdWString(wide);
}

/// A key of the component configuration.
template <typename Value> struct Entry
{
    Entry(const QString &section, const QString &key, const Value &byDefault)
        : section(section), key(key), path(section + QLatin1Char('/') + key), byDefault(byDefault)
    {
    }

    QString section;
    QString key;
    QString path; // of both, as QSettings takes it
    Value byDefault;
};

using Text = Entry<QString>;
using Number = Entry<int>;

/// The keys that have a getter. Made on first use: loading the library reads no file.
struct Entries
{
    const QString DEF_PRODUCT_NAME = text(MacGlobalConfig::GetProductNameW(true));
    const QString DEF_ASSOCIATE_PREFIX = text(MacGlobalConfig::GetProductNamePrefixW());
    const QString DEF_OFFICAL_URL = text(MacGlobalUrl::GetOfficeWebsiteUrl());
    const QString DEF_LICENCE_URL = text(MacGlobalUrl::GetDefLicenceUrl());
    const QString DEF_PRIVACY_URL = text(MacGlobalUrl::GetDefPrivacyUrl());
    const QString DEF_COPYRIGHT = text(MacGlobalUrl::GetDefCopyright());

    // clang-format off
    const Text productName{"product", "product_name", DEF_PRODUCT_NAME};
    const Text topLeftTitle{"title", "top_left_title", DEF_PRODUCT_NAME};
    const Text windowTitle{"title", "window_title", DEF_PRODUCT_NAME};
    const Text associateExe{"associate", "executor", text(product::kAssociateExe)};
    const Text associateDesc{"associate", "description", DEF_PRODUCT_NAME};
    const Text associateBackDesc{"associate", "backup", text(product::kAssociateBackup)};
    const Text associateAvoid{"associate", "avoid", QString()};
    const Text associateDlgPrefix{"associate_dialog", "product_name", DEF_ASSOCIATE_PREFIX};
    const Text officalUrl{"about", "offical_url", DEF_OFFICAL_URL};
    const Text licenceUrl{"about", "licence_url", DEF_LICENCE_URL};
    const Text privacy{"about", "privacy_url", DEF_PRIVACY_URL};
    const Text copyRight{"about", "copyright", DEF_COPYRIGHT};
    const Number ocrAppId{"product", "ocr_app_id", 23};
    const Number ocrAppIdTolva{"product", "ocr_app_id_tolva", 13};
    const Number isTolvaProduct{"product", "is_tv_product", 0};
    const Number helpEnable{"product", "is_help_enable", 1};
    const Number vipId{"product", "vip_id", 13};
    const Text serviceName{"product", "service_name", text(product::kServiceName)};
    const Text installRegName{"product", "reg_name", text(product::kRegName)};
    const Text readerExeName{"file", "reader_name", text(product::kReaderExe)};
    const Text cacheDirName{"file", "cache_dir", text(product::kCacheDir)};
    const Text internationReportId{"internation", "report_id", text(product::kReportId)};
    const Text internationReportPrefix{"internation", "report_prefix", text(product::kReportPrefix)};
    // clang-format on
};

const Entries &entries()
{
    static const Entries &all = *new Entries;
    return all;
}

} // namespace

/// The component configuration and what was asked of it: to find a key takes a walk through the file.
struct ProductCfgUtil::Component
{
    static constexpr int kMaxRemembered = 500; // whatever names are made up

    std::optional<QString> text(const QString &path)
    {
        return remembered(texts, path, [&] { return content.text(path); });
    }

    std::optional<int> number(const QString &path)
    {
        return remembered(numbers, path, [&] {
            const std::optional<QVariant> value = content.value(path);
            return value ? std::optional(ini::number(*value)) : std::nullopt;
        });
    }

    template <typename Value, typename Find>
    std::optional<Value> remembered(QHash<QString, std::optional<Value>> &known, const QString &path, Find find)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        auto found = known.constFind(path);
        if (found == known.constEnd()) {
            if (known.size() >= kMaxRemembered)
                known.clear();
            found = known.insert(path, find());
        }
        return *found;
    }

    QString value(const ProductCfgParser &parser, const Text &entry)
    {
        return parser.GetStringValue(entry.section, entry.key, text(entry.path).value_or(entry.byDefault));
    }

    int value(const ProductCfgParser &parser, const Number &entry)
    {
        return parser.GetIntValue(entry.section, entry.key, number(entry.path).value_or(entry.byDefault));
    }

    const ini::Content content = ini::load(locations::inApplication("cfgdata/componentConfig.ini"), true);
    std::mutex mutex;
    QHash<QString, std::optional<QString>> texts;
    QHash<QString, std::optional<int>> numbers;
};

ProductCfgUtil::ProductCfgUtil() : m_component(std::make_unique<Component>()), m_parser(ProductCfgParser::Reader)
{
    initEdition();
    initSpecialEditionCfg();
}

ProductCfgUtil::~ProductCfgUtil() = default;

void ProductCfgUtil::initEdition()
{
    m_edition = m_component->number(QStringLiteral("product/product_edition")).value_or(m_edition);
    m_edition = ini::number(ini::load(locations::serverFile()).value(QStringLiteral("Common/Edition"), m_edition));
}

void ProductCfgUtil::initSpecialEditionCfg()
{
    m_parser.Init(static_cast<PDFEdition::EDITION>(m_edition), locations::inApplication("cfgdata/componentConfig.dat"),
                  QStringLiteral("software/%1").arg(getInstallRegName()));
}

QString ProductCfgUtil::getStringValue(const QString &section, const QString &key, const QString &defaultValue) const
{
    return m_component->value(m_parser, Text(section, key, defaultValue));
}

int ProductCfgUtil::getIntValue(const QString &section, const QString &key, int defaultValue) const
{
    return m_component->value(m_parser, Number(section, key, defaultValue));
}

// One line per getter, so that they can be read beside the table.
// clang-format off
int ProductCfgUtil::getProductEdition() const { return m_edition; }

QString ProductCfgUtil::getProductName() const { return m_component->value(m_parser, entries().productName); }
QString ProductCfgUtil::getTopLeftTitle() const { return m_component->value(m_parser, entries().topLeftTitle); }
QString ProductCfgUtil::getWindowTitle() const { return m_component->value(m_parser, entries().windowTitle); }

QString ProductCfgUtil::getAssociateExe() const { return m_component->value(m_parser, entries().associateExe); }
QString ProductCfgUtil::getAssociateDesc() const { return m_component->value(m_parser, entries().associateDesc); }
QString ProductCfgUtil::getAssociateBackDesc() const { return m_component->value(m_parser, entries().associateBackDesc); }
QString ProductCfgUtil::getAssociateDlgPrefix() const { return m_component->value(m_parser, entries().associateDlgPrefix); }

QString ProductCfgUtil::getOfficalUrl() const { return m_component->value(m_parser, entries().officalUrl); }
QString ProductCfgUtil::getLicenceUrl() const { return m_component->value(m_parser, entries().licenceUrl); }
QString ProductCfgUtil::getPrivacy() const { return m_component->value(m_parser, entries().privacy); }
QString ProductCfgUtil::getCopyRight() const { return m_component->value(m_parser, entries().copyRight); }

bool ProductCfgUtil::isTolvaProduct() const { return m_component->value(m_parser, entries().isTolvaProduct) != 0; }
bool ProductCfgUtil::getHelpEnable() const { return m_component->value(m_parser, entries().helpEnable) != 0; }
int ProductCfgUtil::getVipId() const { return m_component->value(m_parser, entries().vipId); }

QString ProductCfgUtil::getServiceName() const { return m_component->value(m_parser, entries().serviceName); }
QString ProductCfgUtil::getInstallRegName() const { return m_component->value(m_parser, entries().installRegName); }
QString ProductCfgUtil::getReaderExeName() const { return m_component->value(m_parser, entries().readerExeName); }
QString ProductCfgUtil::getCacheDirName() const { return m_component->value(m_parser, entries().cacheDirName); }
QString ProductCfgUtil::getInternationReportId() const { return m_component->value(m_parser, entries().internationReportId); }
QString ProductCfgUtil::getInternationReportPrefix() const { return m_component->value(m_parser, entries().internationReportPrefix); }
// clang-format on

QStringList ProductCfgUtil::getAssociateAvoid() const
{
    const QString programs = m_component->value(m_parser, entries().associateAvoid);
    return programs.split(QLatin1Char('|'), Qt::SkipEmptyParts, Qt::CaseSensitive);
}

int ProductCfgUtil::getServiceAppId() const
{
    const bool isTolvaAccount = account_id::get([this] { return isTolvaProduct(); }) == vip_sdk::PRODUCT_ID_TOLVA;
    return m_component->value(m_parser, isTolvaAccount ? entries().ocrAppIdTolva : entries().ocrAppId);
}

QString ProductCfgUtil::getProductHost() const
{
    bool isForced = false;
    const QString host = QString::fromStdString(MacGlobalUrl::GetDefSvrHost(&isForced));
    return isForced ? host : getStringValue("product", "host", host);
}

QString ProductCfgUtil::getProductGUID() const
{
    return getStringValue("product", "guid", getDefProductGUID());
}

QString ProductCfgUtil::getDefProductGUID() const
{
    const bool hasItsOwn = m_edition == PDFEdition::Independent && !isTolvaProduct();
    return text(hasItsOwn ? product::kGuidIndependent.view() : product::kGuid);
}

QString ProductCfgUtil::getUninstallRegName() const
{
    return getStringValue("product", "uninstall_key", getInstallRegName());
}

void ProductCfgUtil::checkAssertEdition(PDFEdition::EDITION edition) const
{
    static const PDFEdition::EDITION first = edition;
    Q_ASSERT(edition == first);
}
