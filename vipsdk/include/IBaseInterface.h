#pragma once

#include "vipsdk/include/VipSdkExport.h"

namespace vip_sdk {

/// A service of the SDK. Services live as long as the process; they are started and stopped, and may be started again.
class ONDVIPSDK_EXPORT IBaseInterface
{
public:
    virtual ~IBaseInterface();

    /// Starts the service. Does nothing when it runs.
    virtual void Initialize() = 0;
    /// Stops the service and waits for its threads. Does nothing when it does not run.
    virtual void UnInitialize() = 0;
};

} // namespace vip_sdk
