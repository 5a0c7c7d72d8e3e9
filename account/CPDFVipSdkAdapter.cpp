#include "account/CPDFVipSdkAdapter.h"

#include "account/CPDFRookVipSdkAdapter.h"
#include "config/AccountId_p.h"
#include "config/ProductCfgUtil.h"
#include "runtime/ProcessEnd_p.h"

#include <QDebug>

vip_sdk::PRODUCT_ID CPDFVipSdkAdapter::getCurrentVipSdkId()
{
    return account_id::get([] { return SingleTon<ProductCfgUtil>::GetInstance()->isTolvaProduct(); });
}

void CPDFVipSdkAdapter::setCurrentVipSdkId(vip_sdk::PRODUCT_ID id)
{
    account_id::set(id);
}

CPDFVipSdkAdapter *CPDFVipSdkAdapter::GetInstance()
{
    static CPDFVipSdkAdapter &instance = *new CPDFVipSdkAdapter;
    return &instance;
}

CPDFVipSdkAdapter::CPDFVipSdkAdapter()
{
    atProcessEnd(ProcessEnd::account, [] { GetInstance()->Uninitialize(); });
}

CPDFVipSdkAdapter::~CPDFVipSdkAdapter() = default;

void CPDFVipSdkAdapter::Initialize(bool /*unused*/)
{
    if (m_initialized)
        return;
    m_initialized = true;
    // Not the product of getCurrentVipSdkId(): sessions are shared under this one.
    m_adapter = std::make_unique<CPDFRookVipSdkAdapter>(vip_sdk::PRODUCT_ID_PDF);
}

void CPDFVipSdkAdapter::Uninitialize()
{
    if (!m_initialized)
        return;
    const QWriteLocker locker(&m_lock);
    m_adapter.reset();
    m_initialized = false;
}

IPDFVipSdkAdapter *CPDFVipSdkAdapter::getCurrentVipSdkAdapter(bool &out)
{
    out = false;
    return m_adapter.get();
}

// clang-format off
void CPDFVipSdkAdapter::setPageProvider(IVipPageProvider *provider) { m_pageProvider = provider; }
bool CPDFVipSdkAdapter::GetUserInfo(vip_sdk::UserInfo &info) { return m_adapter && m_adapter->GetUserInfo(info); }
bool CPDFVipSdkAdapter::GetLocalUserInfo(LocalUserInfo &info) { return m_adapter && m_adapter->GetLocalUserInfo(info); }
bool CPDFVipSdkAdapter::IsLogin() { return m_adapter && m_adapter->IsLogin(); }
bool CPDFVipSdkAdapter::IsAnonymous() { return m_adapter && m_adapter->IsAnonymous(); }
// clang-format on

void CPDFVipSdkAdapter::SetCurrentVipFrom(int from)
{
    if (m_adapter)
        m_adapter->SetCurrentVipFrom(from);
}

bool CPDFVipSdkAdapter::OpenVipGUIPage(VIP_GUI_PAGE page, int from, int fid, bool logoutForever,
                                       VIP_PRIVILEGE privilege)
{
    qDebug() << "OpenVipGUIPage with privilege " << static_cast<int>(privilege);
    if (!m_pageProvider)
        return m_adapter && m_adapter->OpenVipGUIPage(page, from, fid, logoutForever, privilege);
    const auto open = page == VIP_GUI_PAGE_HOST ? &IVipPageProvider::OpenHostPage
        : page == VIP_GUI_PAGE_LOGIN            ? &IVipPageProvider::OpenLoginPage
                                                : &IVipPageProvider::OpenVipPage;
    return (m_pageProvider->*open)(page, from, fid, logoutForever, privilege);
}

void CPDFVipSdkAdapter::RegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback)
{
    if (m_adapter)
        m_adapter->RegisterUserInfoChangeCallBack(callback);
    const QWriteLocker locker(&m_lock);
    if (callback)
        m_callbacks.insert(callback);
}

void CPDFVipSdkAdapter::UnRegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback)
{
    if (m_adapter)
        m_adapter->UnRegisterUserInfoChangeCallBack(callback);
    const QWriteLocker locker(&m_lock);
    m_callbacks.erase(callback);
}

// clang-format off
bool CPDFVipSdkAdapter::GetUserCertificate(std::wstring &certificate) { return m_adapter && m_adapter->GetUserCertificate(certificate); }
bool CPDFVipSdkAdapter::Logout() { return m_adapter && m_adapter->Logout(); }
bool CPDFVipSdkAdapter::IsLocalUserInfoHasKeyByCache(const std::wstring &key) { return m_adapter && m_adapter->IsLocalUserInfoHasKeyByCache(key); }
bool CPDFVipSdkAdapter::RefreshLocalUserInfoCache() { return m_adapter && m_adapter->RefreshLocalUserInfoCache(); }
bool CPDFVipSdkAdapter::StartFrontTask() { return m_adapter && m_adapter->StartFrontTask(); }
bool CPDFVipSdkAdapter::GetStrUserInfo(QString &info) { return m_adapter && m_adapter->GetStrUserInfo(info); }
bool CPDFVipSdkAdapter::LogoutForever(int *result) { return m_adapter && m_adapter->LogoutForever(result); }
// clang-format on

bool CPDFVipSdkAdapter::SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                                    const wchar_t *avatar)
{
    return m_adapter && m_adapter->SetUserInfo(openId, token, nickname, avatar);
}

bool CPDFVipSdkAdapter::Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag)
{
    return m_adapter && m_adapter->Login(user, password, errorCode, flag);
}
