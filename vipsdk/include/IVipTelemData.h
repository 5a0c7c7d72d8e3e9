#pragma once

#include "vipsdk/include/VipSdkExport.h"

namespace vip_sdk {

/// A telemetry record.
class ONDVIPSDK_EXPORT IVipTelemData
{
public:
    virtual ~IVipTelemData();

protected:
    IVipTelemData() = default;
};

} // namespace vip_sdk
