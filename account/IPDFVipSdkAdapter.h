#pragma once

#include "config/Export.h"

#include <QString>
#include <cstdint>
#include <string>

namespace vip_sdk {
struct UserInfo;
}

/// What the application asks of the user's account: who is logged in, logging in and out, notices of changes, account
/// pages. CPDFVipSdkAdapter is the one to use; the adapters behind it have the same operations.
///
/// Nothing is thrown. Without a membership SDK every question is answered with false and every command does nothing.
/// Wide texts are UTF-32. The order of the operations is that of the virtual table.
class ONDPDFTOOLUTILS_EXPORT IPDFVipSdkAdapter
{
public:
    /// An account page. Other numbers than the named ones are allowed, too, and passed on unchanged.
    enum VIP_GUI_PAGE : int {
        VIP_GUI_PAGE_LOGIN = 1,
        VIP_GUI_PAGE_MAIN = 2,
        VIP_GUI_PAGE_HOST = 7, ///< routed to the host's page provider in a way of its own
        VIP_GUI_PAGE_RESET_PASSWORD = 8,
        VIP_GUI_PAGE_FORGOT_PASSWORD = 12,
    };

    /// What the user wants to do that needs a membership. Only passed on here.
    enum VIP_PRIVILEGE : int {};

    /// The logged-in user.
    struct LocalUserInfo
    {
        std::wstring open_id; ///< what the service knows the user by
        std::wstring token; ///< of the session; a secret
        std::wstring nickname; ///< what the user is shown as
        std::int32_t register_from = 0; ///< the channel of the registration, as the service reports it
        bool is_logout = false; ///< the service reports the account as logged out
        std::wstring avatar; ///< address of the image
        QString avatar_text; ///< the same, for widgets
        QString email; ///< the address that the user logs in with
        bool anonymous = false; ///< nobody is known; kept for the interface, the adapters here leave it false
    };

    /// Told of changes to the user. Implemented by windows. Registering one does not pass on its ownership.
    ///
    /// Called on the SDK's thread with the mutex of the listeners held. It may ask the adapter and log out, but must
    /// not register or unregister anybody or end the account, nor wait for a thread that does: all of these wait for
    /// it.
    class IUserInfoChangeCallBack
    {
    public:
        /// After somebody logged in or out, or the user's information changed, in any process of the user.
        virtual void OnUserInfoChange(const LocalUserInfo &info) = 0;
        /// After the account was logged out for good.
        virtual void OnLogoutForeverUserInfoChange(const LocalUserInfo &info) = 0;

    protected:
        ~IUserInfoChangeCallBack() = default;
    };

    virtual ~IPDFVipSdkAdapter() = default;

    /// The user in the SDK's form. False, with `info` left alone, when it cannot be read.
    virtual bool GetUserInfo(vip_sdk::UserInfo &info) = 0;
    /// The user. True when the SDK answered; what its answer lacks, or all when it is malformed, is empty, 0 or false.
    virtual bool GetLocalUserInfo(LocalUserInfo &info) = 0;

    /// Whether somebody is logged in. False without an SDK.
    virtual bool IsLogin() = 0;
    /// Whether nobody is logged in, or somebody of whom nothing can be read. False without an SDK.
    virtual bool IsAnonymous() = 0;

    /// Records which entry point the user came through.
    virtual void SetCurrentVipFrom(int from) = 0;
    /// Opens an account page: `from` is the entry point, `fid` the feature that the user came from, `logoutForever`
    /// that the account is to be logged out for good. True when it was handed to a program that shows it.
    virtual bool OpenVipGUIPage(VIP_GUI_PAGE page, int from, int fid, bool logoutForever, VIP_PRIVILEGE privilege) = 0;

    /// Has `callback` told of changes from now on, once per change however often it is registered; null is ignored. It
    /// is called on the SDK's thread and must not register or unregister anything from inside the call.
    virtual void RegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback) = 0;
    /// Ends that; waits for a notice that is being delivered.
    virtual void UnRegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback) = 0;

    /// What proves the session to the account's web pages; a secret. False, with `certificate` left alone, when there
    /// is none.
    virtual bool GetUserCertificate(std::wstring &certificate) = 0;
    /// Ends the session in all processes of the user.
    virtual bool Logout() = 0;

    /// Whether a cache of the user holds `key`. Adapters need not keep one: false.
    virtual bool IsLocalUserInfoHasKeyByCache(const std::wstring &key);
    /// Brings that cache up to date; whether it is. False where there is none.
    virtual bool RefreshLocalUserInfoCache();
    /// Starts the SDK's work for an application in the foreground.
    virtual bool StartFrontTask();

    /// The user as one text, as far as the adapter keeps one.
    virtual bool GetStrUserInfo(QString &info) = 0;
    /// Logs the account out for good. `*result`, which may be null, receives the service's result.
    virtual bool LogoutForever(int *result) = 0;
    /// Hands four texts on to the SDK unchanged: open id, token, nickname and avatar.
    virtual bool SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                             const wchar_t *avatar) = 0;
    /// Logs in; blocks until the service has answered. On failure `errorCode` receives the service's code
    /// (vip_sdk::LoginError); `flag` receives whether the login created the account. Both are written by the SDK alone.
    virtual bool Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag) = 0;
};
