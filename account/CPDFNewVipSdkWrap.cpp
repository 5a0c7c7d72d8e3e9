#include "account/CPDFNewVipSdkWrap.h"

#include "account/VipSdkWrapper.h"

#include "vipsdk/include/IVipSdkCoreInterface.h"

using vip_sdk::VipSdkWrapper;

namespace {

CPDFNewVipSdkWrap g_instance;

} // namespace

// clang-format off
CPDFNewVipSdkWrap *CPDFNewVipSdkWrap::GetInstance() { return &g_instance; }
bool CPDFNewVipSdkWrap::InitInstance() { return VipSdkWrapper::Init(); }
bool CPDFNewVipSdkWrap::_Init() { return VipSdkWrapper::Init(); } // NOLINT(bugprone-reserved-identifier)
bool CPDFNewVipSdkWrap::UnInitInstance() { return VipSdkWrapper::UnInit(); }
bool CPDFNewVipSdkWrap::_Uninit() { return VipSdkWrapper::UnInit(); } // NOLINT(bugprone-reserved-identifier)
vip_sdk::IVipSdkCoreInterface *CPDFNewVipSdkWrap::GetVipCore() { return VipSdkWrapper::GetVipSdkCoreInterface(); }
// clang-format on

bool CPDFNewVipSdkWrap::Login(const std::wstring &user, const std::wstring &password, int &errorCode, bool &flag)
{
    vip_sdk::IVipSdkCoreInterface *core = GetVipCore();
    return core && core->Login(user.c_str(), password.c_str(), errorCode, flag);
}
