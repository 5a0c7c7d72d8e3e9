#include "account/VipSdkInterfaceMgr.h"

#include "account/VipSdkTelemImpl.h"
#include "config/MacGlobalConfig.h"

#include "vipsdk/include/ProductInfoMgr.h"
#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"
#include "vipsdk/include/VipSdkTeleM3rdImpl.h"

namespace vip_sdk {

namespace {

IBaseInterface *newTelemetry()
{
    if (MacGlobalConfig::isInternationalApp())
        return new VipSdkTeleM3rdImpl;
    return new VipSdkTelemImpl;
}

} // namespace

VipSdkInterfaceMgr *VipSdkInterfaceMgr::GetInstance()
{
    static VipSdkInterfaceMgr &instance = *new VipSdkInterfaceMgr; // a login may still look its service up at exit
    return &instance;
}

VipSdkInterfaceMgr::VipSdkInterfaceMgr() = default;

VipSdkInterfaceMgr::~VipSdkInterfaceMgr() = default;

// Services start and stop outside the lock: their threads may look others up. The order of the names is that of
// starting, backwards that of stopping.

bool VipSdkInterfaceMgr::Initialize()
{
    Interfaces added{{kCoreInterfaceName, new VipSdkCoreInterfaceImpl}, {kTelemInterfaceName, newTelemetry()}};
    {
        const std::lock_guard lock(m_mutex);
        m_interfaces = added;
    }
    ProductInfoMgr::GetInstance()->Initialize();
    for (const auto &[name, interface] : added)
        interface->Initialize();
    return true;
}

bool VipSdkInterfaceMgr::UnInitialize()
{
    Interfaces removed;
    {
        const std::lock_guard lock(m_mutex);
        removed.swap(m_interfaces);
    }
    for (auto entry = removed.rbegin(); entry != removed.rend(); ++entry)
        entry->second->UnInitialize();
    return true;
}

IBaseInterface *VipSdkInterfaceMgr::GetInterface(const std::string &name) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_interfaces.find(name);
    return found == m_interfaces.end() ? nullptr : found->second;
}

} // namespace vip_sdk
