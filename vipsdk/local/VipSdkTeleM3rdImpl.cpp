#include "vipsdk/include/VipSdkTeleM3rdImpl.h"

#include "vipsdk/include/ProductInfoMgr.h"
#include "vipsdk/include/VipTelemData.h"

#include <memory>

namespace vip_sdk {

IVipSdkTelemInterface::~IVipSdkTelemInterface() = default;

/// Nothing: a record is reported where it comes in.
class VipSdkTeleM3rdImpl::Private
{
};

VipSdkTeleM3rdImpl::VipSdkTeleM3rdImpl() = default;

VipSdkTeleM3rdImpl::~VipSdkTeleM3rdImpl() = default;

void VipSdkTeleM3rdImpl::Initialize() { }

void VipSdkTeleM3rdImpl::UnInitialize() { }

void VipSdkTeleM3rdImpl::SendTelemData(IVipTelemData *record)
{
    const std::unique_ptr<IVipTelemData> owned(record);
    auto *data = dynamic_cast<VipTelemData *>(record);
    if (!data)
        return;
    const ProductInfoMgr::PublicInfo info = ProductInfoMgr::GetInstance()->GetPublicInfo();
    data->SetPublicInfo(info.tid1, info.tid2, info.tod1, info.tod2, info.iid, info.pid, info.tryNo,
                        info.uuid.toStdWString(), info.version.toStdWString(), info.language.toStdWString());
    data->Report();
}

} // namespace vip_sdk
