#pragma once

#include "account/IPDFVipSdkAdapter.h"
#include "vipsdk/include/VipSdkDefine.h"

#include <QReadWriteLock>
#include <memory>
#include <set>

/// Opens account pages in the host application's own way. Gets the arguments of OpenVipGUIPage() unchanged; what it
/// answers is that function's result.
class IVipPageProvider
{
public:
    ///@{

    /// The types of OpenVipGUIPage().
    using Page = IPDFVipSdkAdapter::VIP_GUI_PAGE;
    using Privilege = IPDFVipSdkAdapter::VIP_PRIVILEGE;
    ///@}

    /// Page 1.
    virtual bool OpenLoginPage(Page page, int from, int fid, bool logoutForever, Privilege privilege) = 0;
    /// Every page but 1 and 7.
    virtual bool OpenVipPage(Page page, int from, int fid, bool logoutForever, Privilege privilege) = 0;
    /// Page 7, whose meaning is the host's own business.
    virtual bool OpenHostPage(Page page, int from, int fid, bool logoutForever, Privilege privilege) = 0;

protected:
    ~IVipPageProvider() = default;
};

/// The account of this installation: one object per process that has an adapter between Initialize() and
/// Uninitialize(), and passes every operation on to it. Without an adapter every question is answered with false and
/// every command does nothing.
///
/// Questions and commands may come from any thread, but not while Uninitialize() runs. Before calling it, unregister
/// every callback that asks anything from inside a notice. OpenVipGUIPage() is for the user-interface thread.
class ONDPDFTOOLUTILS_EXPORT CPDFVipSdkAdapter : public IPDFVipSdkAdapter
{
public:
    /// The process's only instance, made by the first call. At exit, after the requests of GlobalRequestTaskMgr, it
    /// does Uninitialize().
    static CPDFVipSdkAdapter *GetInstance();

    CPDFVipSdkAdapter(const CPDFVipSdkAdapter &) = delete;
    CPDFVipSdkAdapter &operator=(const CPDFVipSdkAdapter &) = delete;

    /// Creates the adapter, which starts the membership SDK; once until Uninitialize(). The argument is not used. The
    /// adapter's product is always 13, whatever getCurrentVipSdkId() says.
    void Initialize(bool unused);
    /// Destroys the adapter, which stops the SDK. Callbacks are not carried over to a later adapter.
    void Uninitialize();
    /// The adapter, not owned by the caller; null without one. `out` is set to false.
    IPDFVipSdkAdapter *getCurrentVipSdkAdapter(bool &out);
    /// Has `provider` open the account pages instead of the adapter; null ends that. The caller keeps it alive until
    /// then.
    void setPageProvider(IVipPageProvider *provider);

    bool GetUserInfo(vip_sdk::UserInfo &info) override;
    bool GetLocalUserInfo(LocalUserInfo &info) override;
    bool IsLogin() override;
    bool IsAnonymous() override;
    void SetCurrentVipFrom(int from) override;
    bool OpenVipGUIPage(VIP_GUI_PAGE page, int from, int fid, bool logoutForever, VIP_PRIVILEGE privilege) override;
    void RegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback) override;
    void UnRegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback) override;
    bool GetUserCertificate(std::wstring &certificate) override;
    bool Logout() override;
    bool IsLocalUserInfoHasKeyByCache(const std::wstring &key) override;
    bool RefreshLocalUserInfoCache() override;
    bool StartFrontTask() override;
    bool GetStrUserInfo(QString &info) override;
    bool LogoutForever(int *result) override;
    bool SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                     const wchar_t *avatar) override;
    bool Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag) override;

    /// The product whose accounts the installation uses, 13 or 103: "account/account" of the user's configuration data
    /// (ConfigFileUtil), read once per process. Without one it is 103 for a tolva product and 13 for others; any other
    /// number counts as 103. Callable from any thread.
    static vip_sdk::PRODUCT_ID getCurrentVipSdkId();
    /// Stores the product in the user's configuration data, unchecked, and uses it from now on.
    static void setCurrentVipSdkId(vip_sdk::PRODUCT_ID id);

private:
    CPDFVipSdkAdapter();
    ~CPDFVipSdkAdapter() override;

    std::unique_ptr<IPDFVipSdkAdapter> m_adapter;
    bool m_initialized = false;
    std::set<IUserInfoChangeCallBack *, std::less<>> m_callbacks; // kept for the interface, nothing reads it
    QReadWriteLock m_lock{QReadWriteLock::Recursive};
    IVipPageProvider *m_pageProvider = nullptr;
};
