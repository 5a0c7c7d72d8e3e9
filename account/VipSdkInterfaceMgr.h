#pragma once

#include "config/Export.h"

#include <map>
#include <mutex>
#include <string>

namespace vip_sdk {

class IBaseInterface;

/// Name of the membership SDK's account service.
inline constexpr char kCoreInterfaceName[] = "vip_sdk_core_interface";
/// Name of its telemetry service.
inline constexpr char kTelemInterfaceName[] = "vip_sdk_telem_interface";

/// The services of the membership SDK by name. There are none before Initialize() and after UnInitialize().
///
/// Services are looked up on any thread at any time, and stay valid after they were stopped. Starting and stopping is
/// for one thread at a time, that which makes and destroys the account adapter.
class ONDPDFTOOLUTILS_EXPORT VipSdkInterfaceMgr
{
public:
    /// The process's only instance, made by the first call and never destroyed.
    static VipSdkInterfaceMgr *GetInstance();

    VipSdkInterfaceMgr(const VipSdkInterfaceMgr &) = delete;
    VipSdkInterfaceMgr &operator=(const VipSdkInterfaceMgr &) = delete;

    /// Creates the services of this edition, has the SDK prepare its product information, and starts the services, the
    /// account before telemetry. Always true. A second call creates new services in place of the others, which are
    /// neither stopped nor deleted: services live as long as the process.
    bool Initialize();

    /// Forgets the services without deleting them, then stops them, telemetry before the account. Always true.
    bool UnInitialize();

    /// The service of that name; null when there is none.
    [[nodiscard]] IBaseInterface *GetInterface(const std::string &name) const;

private:
    VipSdkInterfaceMgr();
    ~VipSdkInterfaceMgr();

    using Interfaces = std::map<std::string, IBaseInterface *>;

    mutable std::mutex m_mutex;
    Interfaces m_interfaces;
};

} // namespace vip_sdk
