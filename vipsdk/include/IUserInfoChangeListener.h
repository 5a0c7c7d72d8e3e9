#pragma once

namespace vip_sdk {

/// Who is told of changes to the account. Called on the SDK's own thread. Not owned by the SDK.
class IUserInfoChangeListener
{
public:
    /// Somebody logged in or out, or the user's information changed, in this or another process of the user.
    virtual void OnUserInfoChange() = 0;
    /// The account was logged out for good.
    virtual void OnLogoutForeverUserInfoChange() = 0;

protected:
    ~IUserInfoChangeListener() = default;
};

} // namespace vip_sdk
