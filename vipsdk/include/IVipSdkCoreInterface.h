#pragma once

#include "vipsdk/include/IBaseInterface.h"
#include "vipsdk/include/IUserInfoChangeListener.h"

namespace vip_sdk {

/// The account service. Operations may be called from any thread, started or not; the notices need a started service.
/// All processes of a user share one session. Texts are UTF-32 and end in NUL. The order of the operations is that of
/// the virtual table.
class ONDVIPSDK_EXPORT IVipSdkCoreInterface : public IBaseInterface
{
public:
    ~IVipSdkCoreInterface() override;

    /// Whether there is a session.
    virtual bool IsLogin() = 0;
    /// Ends the session; true when there is none afterwards.
    virtual bool Logout() = 0;

    /// Writes the user's information to `*json`: a JSON object with the texts "open_id", "token", "nickname", "avatar"
    /// and "email", the integer "register_from" and the boolean "is_logout", which is true without a session. A key
    /// without a value may be missing. To be released with FreeString(). False, with nothing written, when the
    /// information cannot be read.
    virtual bool GetUserInfoJson(wchar_t **json) = 0;
    /// Releases a text that GetUserInfoJson() gave; nothing for null.
    virtual void FreeString(wchar_t *text) = 0;

    /// Has `listener` told of changes, once however often it is added. Null is ignored.
    virtual void AddUserInfoChangeListener(IUserInfoChangeListener *listener) = 0;
    /// After this returns `listener` is not called any more; it waits for a call in progress, unless called from
    /// within it.
    virtual void RemoveUserInfoChangeListener(IUserInfoChangeListener *listener) = 0;

    /// Has the account looked up now rather than at the service's leisure. False when the service is not started.
    virtual bool StartFrontTask() = 0;

    /// Closes the account of the session and ends the session. `*result`, which may be null, receives 0 or why not, a
    /// LoginError.
    virtual bool LogoutForever(int *result) = 0;

    /// Takes over a session that the host got from the service by another way: open id and token, which must not be
    /// empty, nickname and avatar.
    virtual bool SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                             const wchar_t *avatar) = 0;

    /// Logs in; the new session takes the place of an old one. On failure `errorCode` receives a LoginError. `flag`
    /// receives whether the login created the account.
    virtual bool Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag) = 0;

    /// Writes the session's certificate to `*certificate`: what proves the session to the account's web pages, as the
    /// text of query items ("a=b&c=d"). Allocated with new[] and to be freed with delete[]. False, with nothing
    /// written, without a session.
    virtual bool GetUserCertificate(wchar_t **certificate) = 0;
};

} // namespace vip_sdk
