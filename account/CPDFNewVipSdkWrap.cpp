#include "account/CPDFNewVipSdkWrap.h"

#include "account/VipSdkWrapper.h"

#include "vipsdk/include/IVipSdkCoreInterface.h"

using vip_sdk::VipSdkWrapper;

namespace {

CPDFNewVipSdkWrap g_instance;

} // namespace

CPDFNewVipSdkWrap *CPDFNewVipSdkWrap::GetInstance()
{
    return &g_instance;
}

bool CPDFNewVipSdkWrap::InitInstance()
{
    return VipSdkWrapper::Init();
}

bool CPDFNewVipSdkWrap::_Init() // NOLINT(bugprone-reserved-identifier)
{
    return VipSdkWrapper::Init();
}

bool CPDFNewVipSdkWrap::UnInitInstance()
{
    return VipSdkWrapper::UnInit();
}

bool CPDFNewVipSdkWrap::_Uninit() // NOLINT(bugprone-reserved-identifier)
{
    return VipSdkWrapper::UnInit();
}

vip_sdk::IVipSdkCoreInterface *CPDFNewVipSdkWrap::GetVipCore()
{
    return VipSdkWrapper::GetVipSdkCoreInterface();
}

bool CPDFNewVipSdkWrap::Login(const std::wstring &user, const std::wstring &password, int &errorCode, bool &flag)
{
    vip_sdk::IVipSdkCoreInterface *core = GetVipCore();
    return core && core->Login(user.c_str(), password.c_str(), errorCode, flag);
}
