#pragma once

#include "config/Export.h"

namespace vip_sdk {

class IVipSdkCoreInterface;
class IVipSdkTelemInterface;

/// Starts and stops the membership SDK and finds its services. For threads see VipSdkInterfaceMgr.
class ONDPDFTOOLUTILS_EXPORT VipSdkWrapper
{
public:
    /// Starts the SDK, with a line to the diagnostic log. Always true.
    static bool Init();
    /// Stops the SDK. Always true.
    static bool UnInit();

    /// The account service; null while the SDK is not started. Not owned by the caller.
    static IVipSdkCoreInterface *GetVipSdkCoreInterface();
    /// The telemetry service; null while the SDK is not started. Not owned by the caller.
    static IVipSdkTelemInterface *GetVipTelemInterface();
};

} // namespace vip_sdk
