#include "account/IPDFVipSdkAdapter.h"

// clang-format off
bool IPDFVipSdkAdapter::IsLocalUserInfoHasKeyByCache(const std::wstring & /*key*/) { return false; }
bool IPDFVipSdkAdapter::RefreshLocalUserInfoCache() { return false; }
bool IPDFVipSdkAdapter::StartFrontTask() { return false; }
// clang-format on
