#include "account/CPDFVipSdkAdapter.h"

#include "config/ConfigFileUtil.h"
#include "config/ProductCfgUtil.h"

namespace {

constexpr std::uint32_t kNotRead = 0xFFFFFFFF;

QString accountKey()
{
    return QStringLiteral("account/account");
}

std::uint32_t readAccount()
{
    const bool isTolva = SingleTon<ProductCfgUtil>::GetInstance()->isTolvaProduct();
    const int byDefault = isTolva ? vip_sdk::PRODUCT_ID_TOLVA : vip_sdk::PRODUCT_ID_PDF;
    return static_cast<std::uint32_t>(ConfigFileUtil::GetCfgdataFileValueIntUser(accountKey(), byDefault));
}

} // namespace

std::atomic<std::uint32_t> CPDFVipSdkAdapter::g_account{kNotRead};

vip_sdk::PRODUCT_ID CPDFVipSdkAdapter::getCurrentVipSdkId()
{
    using namespace vip_sdk;

    const std::uint32_t known = g_account.load(std::memory_order_relaxed);
    if (known == PRODUCT_ID_PDF || known == PRODUCT_ID_TOLVA)
        return static_cast<PRODUCT_ID>(known);

    std::uint32_t account = known == kNotRead ? readAccount() : known;
    if (account != PRODUCT_ID_PDF)
        account = PRODUCT_ID_TOLVA; // also on products whose default is the other: installations rely on it
    std::uint32_t expected = known; // nothing that was set meanwhile
    g_account.compare_exchange_strong(expected, account, std::memory_order_relaxed);
    return static_cast<PRODUCT_ID>(account);
}

void CPDFVipSdkAdapter::setCurrentVipSdkId(vip_sdk::PRODUCT_ID id)
{
    ConfigFileUtil::SetCfgdataFileValueIntUser(accountKey(), static_cast<int>(id));
    g_account.store(id, std::memory_order_relaxed);
}
