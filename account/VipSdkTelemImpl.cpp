#include "account/VipSdkTelemImpl.h"

namespace vip_sdk {

VipSdkTelemImpl::VipSdkTelemImpl() = default;

VipSdkTelemImpl::~VipSdkTelemImpl() = default;

void VipSdkTelemImpl::Initialize()
{
    m_thread.start();
}

void VipSdkTelemImpl::UnInitialize()
{
    m_thread.stopThread();
}

void VipSdkTelemImpl::SendTelemData(IVipTelemData *record)
{
    m_thread.add(record);
}

} // namespace vip_sdk
