#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"

#include "vipsdk/include/VipSdkDefine.h"
#include "vipsdk/local/AccountService.h"
#include "vipsdk/local/DataDirectory.h"
#include "vipsdk/local/SessionWatcher.h"

#include <QJsonDocument>
#include <QMessageAuthenticationCode>
#include <QUrl>

namespace vip_sdk {

using namespace local_sdk;

namespace {

QString fromWide(const wchar_t *text)
{
    return text ? QString::fromWCharArray(text) : QString();
}

/// A copy to be released with delete[].
wchar_t *newWide(const QString &text)
{
    auto *copy = new wchar_t[static_cast<std::size_t>(text.size()) + 1];
    copy[text.toWCharArray(copy)] = L'\0';
    return copy;
}

QJsonObject userInfo(const std::optional<Session> &session)
{
    if (!session)
        return {{"is_logout", true}};
    return {{"open_id", session->openId}, {"token", session->token}, {"nickname", session->nickname},
            {"avatar", session->avatar},  {"email", session->email}, {"register_from", session->registerFrom},
            {"is_logout", false}};
}

/// Proves the session without giving its token away.
QString certificateOf(const Session &session)
{
    const QByteArray proof =
        QMessageAuthenticationCode::hash(session.openId.toUtf8(), session.token.toUtf8(), QCryptographicHash::Sha256);
    return "open_id=" + QString::fromLatin1(QUrl::toPercentEncoding(session.openId))
        + "&certificate=" + QString::fromLatin1(proof.toHex());
}

} // namespace

IBaseInterface::~IBaseInterface() = default;

IVipSdkCoreInterface::~IVipSdkCoreInterface() = default;

class VipSdkCoreInterfaceImpl::Private
{
public:
    /// Has listeners told soon of a change that was made.
    bool changed(bool success)
    {
        if (success)
            watcher.lookNow();
        return success;
    }

    AccountService service{dataDirectory()};
    SessionWatcher watcher{service};
};

VipSdkCoreInterfaceImpl::VipSdkCoreInterfaceImpl() : m_private(std::make_unique<Private>()) { }

VipSdkCoreInterfaceImpl::~VipSdkCoreInterfaceImpl() = default;

void VipSdkCoreInterfaceImpl::Initialize()
{
    m_private->watcher.start();
}

void VipSdkCoreInterfaceImpl::UnInitialize()
{
    m_private->watcher.stop();
}

bool VipSdkCoreInterfaceImpl::IsLogin()
{
    const std::optional<SessionState> state = m_private->service.state();
    return state && state->session;
}

bool VipSdkCoreInterfaceImpl::Logout()
{
    return m_private->changed(m_private->service.logout());
}

bool VipSdkCoreInterfaceImpl::GetUserInfoJson(wchar_t **json)
{
    const std::optional<SessionState> state = m_private->service.state();
    if (!json || !state)
        return false;
    *json = newWide(QJsonDocument(userInfo(state->session)).toJson(QJsonDocument::Compact));
    return true;
}

void VipSdkCoreInterfaceImpl::FreeString(wchar_t *text)
{
    delete[] text;
}

void VipSdkCoreInterfaceImpl::AddUserInfoChangeListener(IUserInfoChangeListener *listener)
{
    m_private->watcher.add(listener);
}

void VipSdkCoreInterfaceImpl::RemoveUserInfoChangeListener(IUserInfoChangeListener *listener)
{
    m_private->watcher.remove(listener);
}

bool VipSdkCoreInterfaceImpl::StartFrontTask()
{
    return m_private->watcher.lookNow();
}

bool VipSdkCoreInterfaceImpl::LogoutForever(int *result)
{
    const int error = m_private->service.closeAccount();
    if (result)
        *result = error;
    return m_private->changed(error == 0);
}

bool VipSdkCoreInterfaceImpl::SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                                          const wchar_t *avatar)
{
    return m_private->changed(m_private->service.adopt(
        {fromWide(openId), fromWide(token), fromWide(nickname), fromWide(avatar), QString(), 0}));
}

bool VipSdkCoreInterfaceImpl::Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag)
{
    const AccountService::LoginResult result = m_private->service.login(fromWide(user), Password(password));
    errorCode = result.error;
    flag = result.created;
    return m_private->changed(result.error == 0);
}

bool VipSdkCoreInterfaceImpl::GetUserCertificate(wchar_t **certificate)
{
    const std::optional<SessionState> state = m_private->service.state();
    if (!certificate || !state || !state->session)
        return false;
    *certificate = newWide(certificateOf(*state->session));
    return true;
}

} // namespace vip_sdk
