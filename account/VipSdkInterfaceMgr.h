#pragma once

#include "config/Export.h"

#include <map>
#include <string>

namespace vip_sdk {

class IBaseInterface;

/// Names of the membership SDK's services.
inline constexpr char kCoreInterfaceName[] = "vip_sdk_core_interface";
inline constexpr char kTelemInterfaceName[] = "vip_sdk_telem_interface";

/// The services of the membership SDK by name. There are none before Initialize() and after UnInitialize().
///
/// Without a lock: filled and emptied on the thread that makes and destroys the account adapter, read in between.
class ONDPDFTOOLUTILS_EXPORT VipSdkInterfaceMgr
{
public:
    /// The process's only instance, made by the first call and destroyed at exit.
    static VipSdkInterfaceMgr *GetInstance();

    VipSdkInterfaceMgr(const VipSdkInterfaceMgr &) = delete;
    VipSdkInterfaceMgr &operator=(const VipSdkInterfaceMgr &) = delete;

    /// Creates the services of this edition, has the SDK prepare its product information, and starts the services, the
    /// account before telemetry. Always true. A second call creates new services in place of the others, which are
    /// neither stopped nor deleted: services live as long as the process.
    bool Initialize();

    /// Stops the services, telemetry before the account, and forgets them without deleting them. Always true.
    bool UnInitialize();

    /// The service of that name; null when there is none.
    [[nodiscard]] IBaseInterface *GetInterface(const std::string &name) const;

private:
    VipSdkInterfaceMgr();
    ~VipSdkInterfaceMgr();

    std::map<std::string, IBaseInterface *> m_interfaces;
};

} // namespace vip_sdk
