#include "vipsdk/include/VipTelemData.h"

#include "vipsdk/local/DataDirectory.h"
#include "vipsdk/local/File.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

vip_sdk::IVipTelemData::~IVipTelemData() = default;

class VipTelemData::Private
{
public:
    QJsonObject record;
};

VipTelemData::VipTelemData(const std::wstring &event) : m_private(std::make_unique<Private>())
{
    m_private->record = {{"event", QString::fromStdWString(event)},
                         {"time", QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)}};
}

VipTelemData::~VipTelemData() = default;

void VipTelemData::SetPublicInfo(int tid1, int tid2, int tod1, int tod2, int iid, int pid, int tryNo,
                                 const std::wstring &uuid, const std::wstring &version, const std::wstring &language)
{
    m_private->record.insert("product",
                             QJsonObject{{"tid1", tid1},
                                         {"tid2", tid2},
                                         {"tod1", tod1},
                                         {"tod2", tod2},
                                         {"iid", iid},
                                         {"pid", pid},
                                         {"tryno", tryNo},
                                         {"uuid", QString::fromStdWString(uuid)},
                                         {"version", QString::fromStdWString(version)},
                                         {"language", QString::fromStdWString(language)}});
}

bool VipTelemData::Report()
{
    const std::string directory = local_sdk::dataDirectory();
    return local_sdk::makeTrustedDirectory(directory)
        && local_sdk::appendLine(directory + "/telemetry.jsonl",
                                 QJsonDocument(m_private->record).toJson(QJsonDocument::Compact));
}
