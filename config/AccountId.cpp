#include "config/AccountId_p.h"

#include "config/ConfigFileUtil.h"

#include <atomic>
#include <cstdint>

namespace account_id {

namespace {

constexpr std::uint32_t kNotRead = 0xFFFFFFFF;

std::atomic<std::uint32_t> g_account{kNotRead};

QString key()
{
    return QStringLiteral("account/account");
}

} // namespace

vip_sdk::PRODUCT_ID get(const std::function<bool()> &isTolvaProduct)
{
    using namespace vip_sdk;

    std::uint32_t known = g_account.load(std::memory_order_relaxed);
    if (known == PRODUCT_ID_PDF || known == PRODUCT_ID_TOLVA)
        return static_cast<PRODUCT_ID>(known);

    std::uint32_t account = known;
    if (known == kNotRead) {
        const int byDefault = isTolvaProduct() ? PRODUCT_ID_TOLVA : PRODUCT_ID_PDF;
        account = static_cast<std::uint32_t>(ConfigFileUtil::GetCfgdataFileValueIntUser(key(), byDefault));
    }
    if (account != PRODUCT_ID_PDF)
        account = PRODUCT_ID_TOLVA; // also on products whose default is the other: installations rely on it
    g_account.compare_exchange_strong(known, account, std::memory_order_relaxed); // keeps what was set meanwhile
    return static_cast<PRODUCT_ID>(account);
}

void set(vip_sdk::PRODUCT_ID id)
{
    ConfigFileUtil::SetCfgdataFileValueIntUser(key(), static_cast<int>(id));
    g_account.store(id, std::memory_order_relaxed);
}

} // namespace account_id
