#include "account/CPDFNewVipSdkAdapter.h"

#include "account/CPDFNewVipSdkWrap.h"
#include "config/CPDFEdition.h"
#include "vipsdk/include/IVipSdkCoreInterface.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <identity.h>
#include <memory>

namespace {

struct PageCommand
{
    int page;
    const char *format;
};

// Ends in a blank, and so yields an empty argument before what is appended: the account helper expects it so.
constexpr PageCommand kPageCommands[] = {
    {1, "--open_web=login --pid=%1 "}, {2, "--open_web=main --pid=%1 "}, {3, "--open_action=1 --pid=%1 "},
    {4, "--open_web=main --pid=%1 "},  {5, "--open_web=main --pid=%1 "}, {10, "--open_web=main --pid=%1 "},
    {11, "--open_web=main --pid=%1 "},
};

void fill(IPDFVipSdkAdapter::LocalUserInfo &info, const QJsonObject &user)
{
    const auto text = [&user](const char *key) { return user.value(QLatin1String(key)).toString(); };
    info.avatar = text("avatar").toStdWString();
    info.token = text("token").toStdWString();
    info.open_id = text("open_id").toStdWString();
    info.nickname = text("nickname").toStdWString();
    info.register_from = user.value(QLatin1String("register_from")).toInt(0);
    info.is_logout = user.value(QLatin1String("is_logout")).toBool(false);
    info.avatar_text = text("avatar");
    info.email = text("email");
}

} // namespace

CPDFNewVipSdkAdapter::CPDFNewVipSdkAdapter(vip_sdk::PRODUCT_ID productId) : m_productId(productId)
{
    CPDFNewVipSdkWrap::InitInstance();
    m_core = CPDFNewVipSdkWrap::GetVipCore();
    for (const auto &[page, format] : kPageCommands)
        setPageCommand(static_cast<VIP_GUI_PAGE>(page), QLatin1String(format));
    if (m_core)
        m_core->AddUserInfoChangeListener(this);
}

CPDFNewVipSdkAdapter::~CPDFNewVipSdkAdapter()
{
    endNotices();
    CPDFNewVipSdkWrap::UnInitInstance();
}

bool CPDFNewVipSdkAdapter::GetUserInfo(vip_sdk::UserInfo &info)
{
    LocalUserInfo user;
    if (!GetLocalUserInfo(user))
        return false;
    info.open_id = user.open_id;
    info.token = user.token;
    info.nickname = user.nickname;
    info.register_from = user.register_from;
    info.is_logout = user.is_logout;
    info.avatar = user.avatar;
    return true;
}

bool CPDFNewVipSdkAdapter::GetLocalUserInfo(LocalUserInfo &info)
{
    if (!m_core)
        return false;
    wchar_t *text = nullptr;
    const bool isRead = m_core->GetUserInfoJson(&text);
    QString json;
    if (text) {
        json = QString::fromWCharArray(text);
        m_core->FreeString(text);
    }
    if (isRead)
        fill(info, QJsonDocument::fromJson(json.toUtf8()).object());
    return isRead;
}

bool CPDFNewVipSdkAdapter::IsLogin()
{
    return m_core && m_core->IsLogin();
}

bool CPDFNewVipSdkAdapter::IsAnonymous()
{
    if (!m_core)
        return false;
    if (!IsLogin())
        return true;
    LocalUserInfo info;
    return !GetLocalUserInfo(info) || info.anonymous;
}

void CPDFNewVipSdkAdapter::SetCurrentVipFrom(int from)
{
    m_vipFrom = from;
}

bool CPDFNewVipSdkAdapter::OpenVipGUIPage(VIP_GUI_PAGE page, int from, int fid, bool logoutForever,
                                          VIP_PRIVILEGE /*privilege*/)
{
    const auto command = m_pageCommands.find(page);
    if (command == m_pageCommands.end())
        return false;
    QString commandLine = command->second + QStringLiteral(" --vipfrom=%1 --subpid=1 --fid=%2").arg(from).arg(fid);
    if (logoutForever)
        commandLine += QLatin1String(" --logoutforever=1");
    return runHelper(commandLine);
}

void CPDFNewVipSdkAdapter::RegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback)
{
    m_listeners.Add(callback);
}

void CPDFNewVipSdkAdapter::UnRegisterUserInfoChangeCallBack(IUserInfoChangeCallBack *callback)
{
    m_listeners.Remove(callback);
}

bool CPDFNewVipSdkAdapter::GetUserCertificate(std::wstring &certificate)
{
    wchar_t *text = nullptr;
    if (!m_core || !m_core->GetUserCertificate(&text) || !text)
        return false;
    const std::unique_ptr<wchar_t[]> owner(text); // NOLINT(modernize-avoid-c-arrays): as the SDK allocated it
    certificate = text;
    return true;
}

bool CPDFNewVipSdkAdapter::Logout()
{
    return m_core && m_core->Logout();
}

bool CPDFNewVipSdkAdapter::GetStrUserInfo(QString &info)
{
    info = m_strUserInfo;
    return true;
}

bool CPDFNewVipSdkAdapter::LogoutForever(int *result)
{
    return m_core && m_core->LogoutForever(result);
}

bool CPDFNewVipSdkAdapter::SetUserInfo(const wchar_t *openId, const wchar_t *token, const wchar_t *nickname,
                                       const wchar_t *avatar)
{
    return m_core && m_core->SetUserInfo(openId, token, nickname, avatar);
}

bool CPDFNewVipSdkAdapter::Login(const wchar_t *user, const wchar_t *password, int &errorCode, bool &flag)
{
    return m_core && m_core->Login(user, password, errorCode, flag);
}

void CPDFNewVipSdkAdapter::OnUserInfoChange()
{
    notify(&IUserInfoChangeCallBack::OnUserInfoChange);
}

void CPDFNewVipSdkAdapter::OnLogoutForeverUserInfoChange()
{
    notify(&IUserInfoChangeCallBack::OnLogoutForeverUserInfoChange);
}

bool CPDFNewVipSdkAdapter::RunVipProcess(const std::wstring &exePath, const std::wstring &commandLine)
{
    const QString program = QString::fromStdWString(exePath);
    const QFileInfo file(program);
    if (!file.isFile() || !file.isExecutable())
        return false;
    return QProcess::startDetached(program, QString::fromStdWString(commandLine).split(QLatin1Char(' ')));
}

void CPDFNewVipSdkAdapter::setPageCommand(VIP_GUI_PAGE page, const QString &format)
{
    m_pageCommands[page] = format.arg(static_cast<unsigned>(m_productId));
}

void CPDFNewVipSdkAdapter::endNotices()
{
    if (m_core)
        m_core->RemoveUserInfoChangeListener(this);
    m_core = nullptr;
}

bool CPDFNewVipSdkAdapter::runHelper(const QString &commandLine)
{
    CPDFEdition *edition = CPDFEdition::GetInstance();
    edition->Initialize(edition->GetEdition()); // else its folders are empty, and any folder's helper would do
    return RunVipProcess(edition->GetParentAppDir() + product::kAccountHelper.wstr(), commandLine.toStdWString());
}

void CPDFNewVipSdkAdapter::notify(CPDFVipUserInfoChangeListenerSet::Notice notice)
{
    LocalUserInfo info;
    GetLocalUserInfo(info);
    m_listeners.Notify(notice, info);
}
