#pragma once

#include "vipsdk/include/IBaseInterface.h"
#include "vipsdk/include/IVipTelemData.h"

namespace vip_sdk {

/// The telemetry service.
class ONDVIPSDK_EXPORT IVipSdkTelemInterface : public IBaseInterface
{
public:
    ~IVipSdkTelemInterface() override;

    /// Reports a record, now or later, and takes ownership of it. Callable from any thread.
    virtual void SendTelemData(IVipTelemData *record) = 0;
};

} // namespace vip_sdk
