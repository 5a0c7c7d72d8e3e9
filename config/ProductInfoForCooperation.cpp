#include "config/ProductInfoForCooperation.h"

#include "config/InstallationId_p.h"
#include "config/Locations_p.h"
#include "vipsdk/include/OndIniWrapper.h"

#include <QDateTime>
#include <QDir>
#include <QStorageInfo>
#include <QSysInfo>
#include <QUuid>
#include <cstdlib>
#include <ctime>

namespace {

constexpr wchar_t kSection[] = L"Common";
constexpr char kDefaultUuidReg[] = R"(CLSID\{A1312CA7-7421-44a4-A51F-F1088A6012E1}\Implemented Categories\)"
                                   "{857E7E92-0F3E-482a-906C-4ED8F19A7FE3}";

} // namespace

ProductInfoForCooperation::ProductInfoForCooperation() : m_file(std::make_unique<cf_ini::OndIniWrapper>())
{
    m_file->LoadFile(locations::serverFile().toStdWString().c_str(), 2, 0);
}

ProductInfoForCooperation::~ProductInfoForCooperation() = default;

int ProductInfoForCooperation::number(const wchar_t *key, int defaultValue) const
{
    return m_file->ReadInt(kSection, key, defaultValue);
}

QString ProductInfoForCooperation::text(const wchar_t *key, const QString &defaultValue) const
{
    return QString::fromStdWString(m_file->Read(kSection, key, defaultValue.toStdWString().c_str()));
}

// clang-format off
int ProductInfoForCooperation::GetPid(int defaultValue) const { return number(L"product_id", defaultValue); }
int ProductInfoForCooperation::GetTid1(int defaultValue) const { return number(L"tid1", defaultValue); }
int ProductInfoForCooperation::GetTid2(int defaultValue) const { return number(L"tid2", defaultValue); }
int ProductInfoForCooperation::GetTod1(int defaultValue) const { return number(L"tod1", defaultValue); }
int ProductInfoForCooperation::GetTod2(int defaultValue) const { return number(L"tod2", defaultValue); }
int ProductInfoForCooperation::GetTryNo(int defaultValue) const { return number(L"TryNo", defaultValue); }
int ProductInfoForCooperation::IsGenerateUUIdSwitchEnable(int defaultValue) const { return number(L"switch_generate_uuid", defaultValue); }
QString ProductInfoForCooperation::GetChanName(const QString &defaultValue) const { return text(L"chan_name", defaultValue); }
QString ProductInfoForCooperation::GetUUIDReg() const { return text(L"uuid_reg", QString::fromLatin1(kDefaultUuidReg)); }
QString ProductInfoForCooperation::GetUUIDKey() const { return text(L"uuid_reg_key", QStringLiteral("uuid")); }
// clang-format on

QString ProductInfoForCooperation::GetUUID(const QString &defaultValue) const
{
    return GetUUIDReg().isEmpty() ? defaultValue : QString();
}

QString ProductInfoForCooperation::GetSvrid(const QString &defaultValue) const
{
    return GetUUID(defaultValue);
}

int ProductInfoForCooperation::GetUUIDRootKety() const
{
    return 0;
}

bool ProductInfoForCooperation::GenerateUUID(void *, const QString &) const
{
    // Asked, and the answer ignored on purpose: nothing is generated on demand on this platform.
    static_cast<void>(IsGenerateUUIdSwitchEnable(1));
    return false;
}

QString ProductInfoForCooperation::AssmbleUUID()
{
    using namespace installation_id;

    std::srand(static_cast<unsigned>(std::time(nullptr)));
    const QString volume = QDir::toNativeSeparators(QDir::cleanPath(locations::applicationDir() + "../"));
    return digest(randomPiece(std::rand()) + uuidPiece(QUuid::createUuid()) + timePiece(QDateTime::currentDateTime())
                  + hostPiece(QSysInfo::machineHostName()) + diskPiece(QStorageInfo(volume).bytesAvailable()));
}
