#include "config/MacGlobalConfig.h"

#include "config/GlobalConfigFile.h"
#include "runtime/CommonFileLog.h"
#include "runtime/MacGlobalUrl.h"

#include <atomic>
#include <cstdint>
#include <identity.h>
#include <mutex>

namespace {

constexpr char kSection[] = "common";

/// A switch of the file: -1 until it is read.
using Switch = std::atomic<std::int64_t>;

Switch g_nEnableFileLog{-1};
Switch g_nEnableSandBox{-1};
Switch g_nIsAppleStorePKG{-1};
Switch g_nIsInternationalApp{-1};

bool isOn(Switch &cache, const char *key)
{
    std::int64_t value = cache.load(std::memory_order_relaxed);
    if (value == -1) {
        value = GetIntValueFromMKDat(kSection, key, 0);
        if (value == -1)
            value = 0; // a file that says -1 is not asked again either
        cache.store(value, std::memory_order_relaxed);
    }
    return value == 1;
}

// One text today. The English default is where an edition with a group of its own would put it.
constexpr masked::View DEF_SHARE_GROUP_NAME = product::kDefaultGroupName;
constexpr masked::View DEF_SHARE_GROUP_NAME_EN = product::kDefaultGroupName;

static_assert(product::kSignKeyDomestic.size() <= 47 && product::kSignKeyInternational.size() <= 47);

masked::View forEdition(masked::View domestic, masked::View international)
{
    return MacGlobalConfig::isInternationalApp() ? international : domestic;
}

masked::View productName(bool plain)
{
    return forEdition(product::kProductNameDomestic,
                      plain ? product::kProductNameInternational.view() : product::kProductNameInternationalForMac);
}

masked::View productNamePrefix()
{
    return forEdition(product::kNamePrefixDomestic, product::kNamePrefixInternational);
}

} // namespace

// clang-format off
bool MacGlobalConfig::IsEnableFileLog() { return isOn(g_nEnableFileLog, "enable_log"); }
bool MacGlobalConfig::IsEnableSandBox() { return isOn(g_nEnableSandBox, "enable_sbx"); }
bool MacGlobalConfig::IsAppleStorePKG() { return isOn(g_nIsAppleStorePKG, "app_store"); }
bool MacGlobalConfig::isInternationalApp() { return isOn(g_nIsInternationalApp, "app_international"); }
// clang-format on

std::string MacGlobalConfig::GetShareGroupName()
{
    static std::mutex mutex;
    static std::string &g_strShareGroupName = *new std::string;

    const std::lock_guard<std::mutex> lock(mutex);
    if (g_strShareGroupName.empty())
        g_strShareGroupName = GetStrValueFromMKDat(kSection, "group_name", DEF_SHARE_GROUP_NAME.str());
    if (g_strShareGroupName.empty())
        g_strShareGroupName = forEdition(DEF_SHARE_GROUP_NAME, DEF_SHARE_GROUP_NAME_EN).str();
    return g_strShareGroupName;
}

std::string MacGlobalConfig::GetMainAppIdentifier()
{
    return forEdition(product::kIdentifierDomestic, product::kIdentifierInternational).str();
}

// clang-format off
std::string MacGlobalConfig::GetSubAppIdentifier(const std::string &sub) { return GetMainAppIdentifier() + "." + sub; }
std::string MacGlobalConfig::GetProductName(bool plain) { return productName(plain).str(); }
std::wstring MacGlobalConfig::GetProductNameW(bool plain) { return productName(plain).wstr(); }
std::string MacGlobalConfig::GetProductNamePrefix() { return productNamePrefix().str(); }
std::wstring MacGlobalConfig::GetProductNamePrefixW() { return productNamePrefix().wstr(); }
std::string MacGlobalConfig::GetProductId() { return isInternationalApp() ? "502" : "44"; }
std::wstring MacGlobalConfig::GetProductIdW() { return isInternationalApp() ? L"502" : L"44"; }
// clang-format on

std::vector<std::string> MacGlobalConfig::GetReporterWhiteList()
{
    // Asked, and the answer ignored on purpose.
    static_cast<void>(isInternationalApp());
    return {};
}

std::string MacGlobalConfig::GetAppAppSignKey()
{
    return forEdition(product::kSignKeyDomestic, product::kSignKeyInternational).str();
}

void MacGlobalConfig::OutputConfigLog()
{
    const auto flag = [](bool on) { return on ? "1" : "0"; };
    const auto write = [](const std::string &name, const std::string &value) {
        CommonFileLog::WriteLog(name + ":" + value);
    };
    write("sbx", flag(IsEnableSandBox()));
    write("app_store", flag(IsAppleStorePKG()));
    write("group_name", GetShareGroupName());
    write("func_host", MacGlobalUrl::GetDefSvrHost(nullptr));
    write("vip_host", MacGlobalUrl::GetVipSvrHost());
    // Settings of the compilation, which support staff tells builds apart by: not the switches of the file.
    write("intl_app", "1");
    write("sandbox", "0");
}
