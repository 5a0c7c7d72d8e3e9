#pragma once

#include "config/Export.h"
#include "vipsdk/include/VipSdkDefine.h"

#include <atomic>
#include <cstdint>

/// The account of this installation.
class ONDPDFTOOLUTILS_EXPORT CPDFVipSdkAdapter
{
public:
    /// The product whose accounts the installation uses, 13 or 103. Read once per process: "account/account" of the
    /// user's configuration data (ConfigFileUtil), where there is none 103 for a tolva product and 13 for others. What
    /// is neither 13 nor 103 counts as 103 from then on. Callable from any thread.
    static vip_sdk::PRODUCT_ID getCurrentVipSdkId();
    /// Stores the product in the user's configuration data, unchecked, and uses it from now on.
    static void setCurrentVipSdkId(vip_sdk::PRODUCT_ID id);

private:
    static std::atomic<std::uint32_t> g_account; // 0xFFFFFFFF until it is read
};
