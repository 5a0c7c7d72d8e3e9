#pragma once

#include "vipsdk/include/IVipSdkCoreInterface.h"

#include <memory>

namespace vip_sdk {

/// The SDK's account service.
class ONDVIPSDK_EXPORT VipSdkCoreInterfaceImpl : public IVipSdkCoreInterface
{
public:
    VipSdkCoreInterfaceImpl();
    ~VipSdkCoreInterfaceImpl() override;

    void Initialize() override;
    void UnInitialize() override;

    bool IsLogin() override;
    bool Logout() override;
    bool GetUserInfoJson(wchar_t **json) override;
    void FreeString(wchar_t *text) override;
    void AddUserInfoChangeListener(IUserInfoChangeListener *listener) override;
    void RemoveUserInfoChangeListener(IUserInfoChangeListener *listener) override;
    bool StartFrontTask() override;
    bool LogoutForever(int *result) override;
    bool SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                     const wchar_t *avatar) override;
    bool Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag) override;
    bool GetUserCertificate(wchar_t **certificate) override;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace vip_sdk
