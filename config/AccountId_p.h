#pragma once

#include "vipsdk/include/VipSdkDefine.h"

#include <functional>

/// The product whose accounts the installation uses: "account/account" of the user's configuration data
/// (ConfigFileUtil), read once per process. Callable from any thread.
namespace account_id {

/// 13 or 103. Where nothing is stored, 103 for a tolva product and 13 for others; what is neither 13 nor 103 counts as
/// 103. `isTolvaProduct` is asked only when the file is read.
[[nodiscard]] vip_sdk::PRODUCT_ID get(const std::function<bool()> &isTolvaProduct);
/// Stores `id`, unchecked, and uses it from now on.
void set(vip_sdk::PRODUCT_ID id);

} // namespace account_id
