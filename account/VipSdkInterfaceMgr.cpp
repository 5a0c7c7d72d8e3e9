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
    static VipSdkInterfaceMgr instance;
    return &instance;
}

VipSdkInterfaceMgr::VipSdkInterfaceMgr() = default;

// The services outlive the registry: they belong to the SDK, whose threads may still use them.
VipSdkInterfaceMgr::~VipSdkInterfaceMgr() = default;

bool VipSdkInterfaceMgr::Initialize()
{
    m_interfaces[kCoreInterfaceName] = new VipSdkCoreInterfaceImpl;
    m_interfaces[kTelemInterfaceName] = newTelemetry();
    ProductInfoMgr::GetInstance()->Initialize();
    // The order of the names is that of starting, backwards that of stopping.
    for (const auto &[name, interface] : m_interfaces)
        interface->Initialize();
    return true;
}

bool VipSdkInterfaceMgr::UnInitialize()
{
    for (auto entry = m_interfaces.rbegin(); entry != m_interfaces.rend(); ++entry)
        entry->second->UnInitialize();
    m_interfaces.clear();
    return true;
}

IBaseInterface *VipSdkInterfaceMgr::GetInterface(const std::string &name) const
{
    const auto found = m_interfaces.find(name);
    return found == m_interfaces.end() ? nullptr : found->second;
}

} // namespace vip_sdk
