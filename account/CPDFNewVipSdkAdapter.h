#pragma once

#include "account/CPDFVipUserInfoChangeListenerSet.h"
#include "account/IPDFVipSdkAdapter.h"
#include "vipsdk/include/IUserInfoChangeListener.h"
#include "vipsdk/include/VipSdkDefine.h"

#include <atomic>
#include <map>

namespace vip_sdk {
class IVipSdkCoreInterface;
}

/// The account on top of the membership SDK. The SDK runs while an adapter exists, and its notices go to the registered
/// callbacks. Account pages are opened by the account helper, a program beside the main application.
///
/// Keeps no copy of the user. The operations may be called from any thread, OpenVipGUIPage() from that of the user
/// interface; the adapter itself is made and destroyed on one.
class ONDPDFTOOLUTILS_EXPORT CPDFNewVipSdkAdapter : public IPDFVipSdkAdapter, public vip_sdk::IUserInfoChangeListener
{
public:
    /// Starts the SDK and has it tell this adapter of changes.
    explicit CPDFNewVipSdkAdapter(vip_sdk::PRODUCT_ID productId);
    /// Ends the notices, waiting for one in progress, and stops the SDK.
    ~CPDFNewVipSdkAdapter() override;

    CPDFNewVipSdkAdapter(const CPDFNewVipSdkAdapter &) = delete;
    CPDFNewVipSdkAdapter &operator=(const CPDFNewVipSdkAdapter &) = delete;

    bool GetUserInfo(vip_sdk::UserInfo &info) override;
    bool GetLocalUserInfo(LocalUserInfo &info) override;
    bool IsLogin() override;
    bool IsAnonymous() override;
    void SetCurrentVipFrom(int from) override;
    /// Starts the account helper with the page's command line. False for other pages than 1 to 5, 10 and 11, and when
    /// the helper does not start.
    bool OpenVipGUIPage(VIP_GUI_PAGE page, int from, int fid, bool logoutForever, VIP_PRIVILEGE privilege) override;
    void RegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback) override;
    void UnRegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback) override;
    bool GetUserCertificate(std::wstring &certificate) override;
    bool Logout() override;
    /// Always true and the empty text.
    bool GetStrUserInfo(QString &info) override;
    bool LogoutForever(int *result) override;
    bool SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                     const wchar_t *avatar) override;
    bool Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag) override;

    void OnUserInfoChange() override;
    void OnLogoutForeverUserInfoChange() override;

    /// Starts the program at `exePath` detached. Its arguments are the pieces of `commandLine` between single blanks,
    /// empty ones included; nothing is quoted and no shell is involved. False when there is no executable file.
    virtual bool RunVipProcess(const std::wstring &exePath, const std::wstring &commandLine);

protected:
    /// As it was given to the constructor.
    [[nodiscard]] vip_sdk::PRODUCT_ID productId() const { return m_productId; }
    /// The account service, which the SDK owns; null without one, and after endNotices().
    [[nodiscard]] vip_sdk::IVipSdkCoreInterface *core() const { return m_core; }
    /// What the command line of a page begins with, by page.
    [[nodiscard]] const std::map<VIP_GUI_PAGE, QString> &pageCommands() const { return m_pageCommands; }
    /// Sets that. For constructors of derived adapters: not locked.
    void setPageCommand(VIP_GUI_PAGE page, const QString &format);
    /// Ends the SDK's notices to this adapter, waiting for one in progress; the adapter is without SDK afterwards.
    /// Every derived destructor calls this first, so that no notice meets a half-destroyed object.
    void endNotices();
    /// Runs the account helper, which lies beside the main application's executable.
    bool runHelper(const QString &commandLine);

private:
    void notify(CPDFVipUserInfoChangeListenerSet::Notice notice);

    std::atomic<int> m_vipFrom{0}; // kept for the interface, nothing reads it
    vip_sdk::PRODUCT_ID m_productId;
    vip_sdk::IVipSdkCoreInterface *m_core = nullptr; // the SDK's
    CPDFVipUserInfoChangeListenerSet m_listeners;
    std::map<VIP_GUI_PAGE, QString> m_pageCommands;
    QString m_strUserInfo; // kept for the interface, nothing fills it
};
