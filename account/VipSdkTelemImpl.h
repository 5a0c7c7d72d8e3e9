#pragma once

#include "config/Export.h"
#include "runtime/TelemThread.h"

#include "vipsdk/include/IVipSdkTelemInterface.h"

namespace vip_sdk {

/// The domestic edition's telemetry service: records are reported on a thread of their own. Once stopped it reports
/// nothing more, also when it is started again.
class ONDPDFTOOLUTILS_EXPORT VipSdkTelemImpl : public IVipSdkTelemInterface
{
public:
    VipSdkTelemImpl();
    ~VipSdkTelemImpl() override;

    void Initialize() override;
    void UnInitialize() override;
    void SendTelemData(IVipTelemData *record) override;

private:
    TelemThread m_thread;
};

} // namespace vip_sdk
