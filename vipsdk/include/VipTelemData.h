#pragma once

#include "vipsdk/include/IVipTelemData.h"

#include <memory>
#include <string>

/// The telemetry record that can be reported: an event, and the product that it happened in.
class ONDVIPSDK_EXPORT VipTelemData : public vip_sdk::IVipTelemData
{
public:
    /// A record of `event`, without the product's information.
    explicit VipTelemData(const std::wstring &event);
    ~VipTelemData() override;

    VipTelemData(const VipTelemData &) = delete;
    VipTelemData &operator=(const VipTelemData &) = delete;

    /// Sets the product's public information, as ProductInfoMgr has it.
    void SetPublicInfo(int tid1, int tid2, int tod1, int tod2, int iid, int pid, int tryNo, const std::wstring &uuid,
                       const std::wstring &version, const std::wstring &language);

    /// Sends the record; may take long. False when it was not taken.
    bool Report();

private:
    class Private;
    std::unique_ptr<Private> m_private;
};
