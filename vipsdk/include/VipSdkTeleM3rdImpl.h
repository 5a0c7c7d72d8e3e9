#pragma once

#include "vipsdk/include/IVipSdkTelemInterface.h"

#include <memory>

namespace vip_sdk {

/// The SDK's own telemetry service, for the international edition. Reports records on the calling thread.
class ONDVIPSDK_EXPORT VipSdkTeleM3rdImpl : public IVipSdkTelemInterface
{
public:
    VipSdkTeleM3rdImpl();
    ~VipSdkTeleM3rdImpl() override;

    void Initialize() override;
    void UnInitialize() override;
    void SendTelemData(IVipTelemData *record) override;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace vip_sdk
