#include "tests/support/ScriptedSdk.h"

#include "tests/support/Answer.h"
#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"
#include "vipsdk/include/VipSdkTeleM3rdImpl.h"
#include "vipsdk/include/VipTelemData.h"

#include <cwchar>

using test::scriptedSdk;

namespace test {

ScriptedSdk &scriptedSdk()
{
    static ScriptedSdk &sdk = *new ScriptedSdk; // logins may be under way at exit
    return sdk;
}

} // namespace test

static void note(const char *call)
{
    scriptedSdk().calls += call + std::string(", ");
}

static bool give(const std::optional<std::wstring> &text, wchar_t **out)
{
    if (!text)
        return false;
    *out = std::wcscpy(new wchar_t[text->size() + 1], text->c_str());
    return ++scriptedSdk().stringsGiven > 0;
}

namespace vip_sdk {

IBaseInterface::~IBaseInterface() = default;
IVipSdkCoreInterface::~IVipSdkCoreInterface() = default;
IVipSdkTelemInterface::~IVipSdkTelemInterface() = default;
IVipTelemData::~IVipTelemData() = default;

class VipSdkCoreInterfaceImpl::Private
{
};

VipSdkCoreInterfaceImpl::VipSdkCoreInterfaceImpl() = default;
VipSdkCoreInterfaceImpl::~VipSdkCoreInterfaceImpl() = default;

ANSWER(void VipSdkCoreInterfaceImpl::Initialize(), note("start core"))
ANSWER(bool VipSdkCoreInterfaceImpl::IsLogin(), scriptedSdk().loggedIn)
ANSWER(bool VipSdkCoreInterfaceImpl::Logout(), scriptedSdk().succeeds)
ANSWER(bool VipSdkCoreInterfaceImpl::StartFrontTask(), scriptedSdk().succeeds)
ANSWER(void VipSdkCoreInterfaceImpl::AddUserInfoChangeListener(IUserInfoChangeListener *listener),
       scriptedSdk().listeners.push_back(listener))
ANSWER(bool VipSdkCoreInterfaceImpl::GetUserInfoJson(wchar_t **json), give(scriptedSdk().userInfoJson, json))
ANSWER(bool VipSdkCoreInterfaceImpl::GetUserCertificate(wchar_t **certificate),
       give(scriptedSdk().certificate, certificate))
ANSWER(bool VipSdkCoreInterfaceImpl::Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag),
       scriptedSdk().login &&scriptedSdk().login(user, password, errorCode, flag))
ANSWER(void VipSdkCoreInterfaceImpl::UnInitialize(), note("stop core"), scriptedSdk().stopping())
ANSWER(void VipSdkCoreInterfaceImpl::FreeString(wchar_t *text), --scriptedSdk().stringsGiven, delete[] text)
ANSWER(bool VipSdkCoreInterfaceImpl::LogoutForever(int *result), (*result = scriptedSdk().succeeds ? 0 : 1) == 0)
ANSWER(bool VipSdkCoreInterfaceImpl::SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                                                 const wchar_t *avatar),
       scriptedSdk().setUserInfo = {openId, token, nickname, avatar}, scriptedSdk().succeeds)

void VipSdkCoreInterfaceImpl::RemoveUserInfoChangeListener(IUserInfoChangeListener *listener)
{
    const std::lock_guard lock(scriptedSdk().listenerMutex);
    scriptedSdk().listeners.remove(listener);
}

class VipSdkTeleM3rdImpl::Private
{
};

VipSdkTeleM3rdImpl::VipSdkTeleM3rdImpl() = default;
VipSdkTeleM3rdImpl::~VipSdkTeleM3rdImpl() = default;
void VipSdkTeleM3rdImpl::SendTelemData(IVipTelemData * /*record*/) { }

ANSWER(void VipSdkTeleM3rdImpl::Initialize(), note("start telemetry"))
ANSWER(void VipSdkTeleM3rdImpl::UnInitialize(), note("stop telemetry"))

} // namespace vip_sdk

class VipTelemData::Private
{
public:
    std::wstring event;
    ProductInfoMgr::PublicInfo info;
};

VipTelemData::VipTelemData(const std::wstring &event) : m_private(new Private{event, {}}) { }
VipTelemData::~VipTelemData() = default;

void VipTelemData::SetPublicInfo(int tid1, int tid2, int tod1, int tod2, int iid, int pid, int tryNo,
                                 const std::wstring &uuid, const std::wstring &version, const std::wstring &language)
{
    const auto text = QString::fromStdWString;
    m_private->info = {tid1, tid2, tod1, tod2, iid, pid, tryNo, text(uuid), text(version), text(language)};
}

ANSWER(bool VipTelemData::Report(), scriptedSdk().report(m_private->event, m_private->info), true)

ProductInfoMgr *ProductInfoMgr::GetInstance()
{
    static ProductInfoMgr instance;
    return &instance;
}

ANSWER(void ProductInfoMgr::Initialize(), note("prepare"))
ANSWER(ProductInfoMgr::PublicInfo ProductInfoMgr::GetPublicInfo() const, scriptedSdk().publicInfo)
