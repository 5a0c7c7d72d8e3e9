#include "account/VipSdkWrapper.h"

#include "account/VipSdkInterfaceMgr.h"
#include "runtime/CommonFileLog.h"

#include "vipsdk/include/IVipSdkCoreInterface.h"
#include "vipsdk/include/IVipSdkTelemInterface.h"

namespace vip_sdk {

namespace {

template <typename Interface> Interface *find(const char *name)
{
    return dynamic_cast<Interface *>(VipSdkInterfaceMgr::GetInstance()->GetInterface(name));
}

} // namespace

bool VipSdkWrapper::Init()
{
    CommonFileLog::WriteLog(std::string("xxxxx VipSdkWrapper::Init"));
    return VipSdkInterfaceMgr::GetInstance()->Initialize();
}

bool VipSdkWrapper::UnInit()
{
    return VipSdkInterfaceMgr::GetInstance()->UnInitialize();
}

IVipSdkCoreInterface *VipSdkWrapper::GetVipSdkCoreInterface()
{
    return find<IVipSdkCoreInterface>(kCoreInterfaceName);
}

IVipSdkTelemInterface *VipSdkWrapper::GetVipTelemInterface()
{
    return find<IVipSdkTelemInterface>(kTelemInterfaceName);
}

} // namespace vip_sdk
