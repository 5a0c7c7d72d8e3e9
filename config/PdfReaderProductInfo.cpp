#include "config/PdfReaderProductInfo_p.h"

#include "config/ConfigFileUtil.h"
#include "config/Locations_p.h"
#include "config/MacGlobalConfig.h"
#include "config/MacReg.h"
#include "config/ProductCfgUtil.h"
#include "config/ProductInfoForCooperation.h"
#include "config/ini/IniStore_p.h"
#include "paths/MacUtils.h"
#include "paths/platform/Applications_p.h"

#include <algorithm>
#include <identity.h>

namespace {

const ProductCfgUtil &config()
{
    return *SingleTon<ProductCfgUtil>::GetInstance();
}

bool isInstalled(masked::View bundleId)
{
    return platform::isApplicationInstalled(bundleId.str());
}

} // namespace

ProductInfo storedProductInfo()
{
    MacReg registry;
    registry.open(QStringLiteral("common"), true);
    const auto value = [&registry](const char *name) { return registry.value(QLatin1String(name), 0); };
    ProductInfo info;
    info.tid1 = value("product/tid1").toInt();
    info.tid2 = value("product/tid2").toInt();
    info.tod1 = value("product/tod1").toInt();
    info.tod2 = value("product/tod2").toInt();
    info.iid = value("product/iid").toInt();
    info.pid = value("product/pid").toInt();
    info.tryNo = value("product/tryno").toInt();
    info.installTime = value("product/installtime").toLongLong();
    info.uuid = ini::text(registry.value(QStringLiteral("product/uuid")));
    info.svrid = ini::text(registry.value(QStringLiteral("product/svrid")));
    return info;
}

int installDays(qint64 installTime, const QDateTime &now)
{
    // Beyond it QDateTime's milliseconds, and then the days of an int, would overflow.
    constexpr qint64 furthest = 400'000'000'000;
    const qint64 time = std::clamp(installTime, -furthest, furthest);
    const qint64 days = QDateTime::fromSecsSinceEpoch(time).daysTo(now);
    return days < 0 ? 0 : static_cast<int>(days) + 1;
}

ProductInfoHelper::ProductInfoHelper(PDFEdition::EDITION edition)
{
    if (edition == PDFEdition::Cooperation)
        InitCooperationEdition();
    else if (edition == PDFEdition::Wrenfix)
        InitWrenfixEdition();
    else if (edition != PDFEdition::Harbo)
        InitIndependentEdition(); // every unknown number, too
    else
        InitHarboEdition();
}

ProductInfo ProductInfoHelper::GetProductInfo() const
{
    return m_info;
}

void ProductInfoHelper::InitIndependentEdition()
{
    m_info = storedProductInfo();
    m_info.productVersion = ConfigFileUtil::GetProductVersion();
    m_info.applicationDir = locations::applicationDir();
    m_info.parentAppDir = locations::parentAppDir();
    m_info.fileVersion = MacUtils::GetBundleVersionTail(true);
    m_info.bundleVersion = QString::fromStdString(MacUtils::GetMainBundleVersionString());
}

void ProductInfoHelper::InitHarboEdition()
{
    InitIndependentEdition();
}

void ProductInfoHelper::InitWrenfixEdition()
{
    InitIndependentEdition();
}

void ProductInfoHelper::InitCooperationEdition()
{
    InitIndependentEdition();
    const ProductInfoForCooperation partner;
    m_info.tid1 = partner.GetTid1(m_info.tid1);
    m_info.tid2 = partner.GetTid2(m_info.tid2);
    m_info.tod1 = partner.GetTod1(m_info.tod1);
    m_info.tod2 = partner.GetTod2(m_info.tod2);
    m_info.pid = partner.GetPid(m_info.pid);
    m_info.tryNo = partner.GetTryNo(m_info.tryNo);
    m_info.uuid = partner.GetUUID(m_info.uuid);
    m_info.svrid = partner.GetSvrid(m_info.svrid);
}

PdfReaderProductInfo *PdfReaderProductInfo::GetInstance()
{
    static PdfReaderProductInfo &instance = *new PdfReaderProductInfo;
    return &instance;
}

PdfReaderProductInfo::PdfReaderProductInfo()
{
    InitProductInfo();
}

void PdfReaderProductInfo::InitProductInfo()
{
    m_info = ProductInfoHelper(static_cast<PDFEdition::EDITION>(GetProductEdition())).GetProductInfo();
    m_totalFileVersion = MacUtils::GetBundleVersionInt(true);
}

// clang-format off
int PdfReaderProductInfo::GetTid1() const { return m_info.tid1; }
int PdfReaderProductInfo::GetTid2() const { return m_info.tid2; }
int PdfReaderProductInfo::GetTod1() const { return m_info.tod1; }
int PdfReaderProductInfo::GetTod2() const { return m_info.tod2; }
int PdfReaderProductInfo::GetIid() const { return m_info.iid; }
int PdfReaderProductInfo::GetPid() const { return m_info.pid; }
int PdfReaderProductInfo::GetTryNo() const { return m_info.tryNo; }
qint64 PdfReaderProductInfo::GetInstallTime() const { return m_info.installTime; }
int PdfReaderProductInfo::GetFileVersion() const { return m_info.fileVersion; }
int PdfReaderProductInfo::GetTotalFileVersion() const { return m_totalFileVersion; }
QString PdfReaderProductInfo::GetUUID() const { return m_info.uuid; }
QString PdfReaderProductInfo::GetSvrid() const { return m_info.svrid; }
std::wstring PdfReaderProductInfo::GetWTod2() const { return std::to_wstring(m_info.tod2); }
QString PdfReaderProductInfo::GetParentAppDir() const { return m_info.parentAppDir; }

int PdfReaderProductInfo::GetInstallDays() const { return installDays(m_info.installTime, QDateTime::currentDateTime()); }
unsigned int PdfReaderProductInfo::SecondToDays(unsigned int seconds) { return seconds / 86400; }

int PdfReaderProductInfo::GetProductEdition() const { return config().getProductEdition(); }
bool PdfReaderProductInfo::IsIndependentEdition() const { return GetProductEdition() == PDFEdition::Independent; }
bool PdfReaderProductInfo::IsHarboEdition() const { return GetProductEdition() == PDFEdition::Harbo; }
bool PdfReaderProductInfo::IsWrenfixEdition() const { return GetProductEdition() == PDFEdition::Wrenfix; }
bool PdfReaderProductInfo::IsCooperationEdition() const { return GetProductEdition() == PDFEdition::Cooperation; }
bool PdfReaderProductInfo::IsInternationEdition() const { return MacGlobalConfig::isInternationalApp(); }

QString PdfReaderProductInfo::GetProductEditionName() const { return config().getProductName(); }
QString PdfReaderProductInfo::GetProductEditionFullName() const { return config().getWindowTitle(); }
QString PdfReaderProductInfo::GetTopLeftTitle() const { return config().getTopLeftTitle(); }
QString PdfReaderProductInfo::GetWindowTitle() const { return config().getWindowTitle(); }
QString PdfReaderProductInfo::GetAssociateExecutor() const { return config().getAssociateExe(); }
QString PdfReaderProductInfo::GetAssociateDescription() const { return config().getAssociateDesc(); }

bool PdfReaderProductInfo::IsHasHarbo() const { return isInstalled(product::kHarboApp); }
bool PdfReaderProductInfo::IsHasLumo() const { return isInstalled(product::kLumoApp); }
bool PdfReaderProductInfo::IsHasLumopdf() const { return isInstalled(product::kLumopdfApp); }
bool PdfReaderProductInfo::IsHasXunjie() const { return isInstalled(product::kXunjieApp); }
bool PdfReaderProductInfo::IsHasFoxit() const { return isInstalled(product::kFoxitApp); }
bool PdfReaderProductInfo::IsHasXundu() const { return isInstalled(product::kXunduApp); }
bool PdfReaderProductInfo::IsHasCloudPdf() const { return isInstalled(product::kCloudPdfApp); }
// clang-format on

void PdfReaderProductInfo::SetTryNo(int value)
{
    ini::change(locations::serverFile(), {{QStringLiteral("Common/TryNo"), QByteArray::number(value)}}, ini::kForAll);
}
