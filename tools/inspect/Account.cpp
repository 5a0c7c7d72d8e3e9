#include "tools/inspect/Account.h"

#include "account/CPDFRookVipSdkAdapter.h"
#include "account/CPDFVipSdkAdapter.h"
#include "account/OndVipGeneratorUtil.h"
#include "account/ui/OndVipInternationFactory.h"
#include "config/QtVersion_p.h"
#include "tools/inspect/Actions.h"
#include "tools/inspect/Terminal.h"

#include <QApplication>

#include <csignal>
#include <mutex>

namespace inspect {

namespace {

using UserInfo = IPDFVipSdkAdapter::LocalUserInfo;

/// The account for the lifetime of a scope.
class Account
{
public:
    Account() { m_account->Initialize(true); }
    ~Account() { m_account->Uninitialize(); }
    Account(const Account &) = delete;
    Account &operator=(const Account &) = delete;

    CPDFVipSdkAdapter *operator->() const { return m_account; }
    [[nodiscard]] CPDFRookVipSdkAdapter *adapter() const
    {
        bool unused = false;
        return dynamic_cast<CPDFRookVipSdkAdapter *>(m_account->getCurrentVipSdkAdapter(unused));
    }

private:
    CPDFVipSdkAdapter *const m_account = CPDFVipSdkAdapter::GetInstance();
};

std::string narrow(const std::wstring &text)
{
    return QString::fromStdWString(text).toStdString();
}

Json toJson(const UserInfo &user)
{
    return {
        {"open_id", narrow(user.open_id)},     {"has_token", !user.token.empty()}, {"nickname", narrow(user.nickname)},
        {"register_from", user.register_from}, {"is_logout", user.is_logout},      {"avatar", narrow(user.avatar)},
        {"email", user.email.toStdString()},
    };
}

int number(const std::string &text)
{
    bool ok = false;
    const int value = QString::fromStdString(text).toInt(&ok);
    if (!ok)
        throw WrongUse("no number: " + escaped(text));
    return value;
}

Json answers()
{
    CPDFVipSdkAdapter *account = CPDFVipSdkAdapter::GetInstance();
    UserInfo user;
    Json all = {
        {"IsLogin", account->IsLogin()},
        {"IsAnonymous", account->IsAnonymous()},
        {"getCurrentVipSdkId", static_cast<unsigned>(CPDFVipSdkAdapter::getCurrentVipSdkId())},
        {"hasUserCertificate", !OndVipGeneratorUtil::GetUserCertificate().isEmpty()},
        {"GetUrlByConfig",
         OndVipGeneratorUtil::GetUrlByConfig(IPDFVipSdkAdapter::VIP_GUI_PAGE_FORGOT_PASSWORD, false).toStdString()},
    };
    if (account->IsLogin() && account->GetLocalUserInfo(user))
        all.update(toJson(user));
    return all;
}

/// Shows the login dialog; the account as it is when that is closed.
Json loginByDialog()
{
    int argc = 1;
    char name[] = "pdforvell-inspect";
    char *argv[] = {name, nullptr};
    qt::drawAtScreenScale();
    const QApplication application(argc, argv);
    OndVipInternationFactory *factory = OndVipInternationFactory::instance();
    factory->Initial();
    factory->showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, 0, 0, false, {});
    Json all = answers();
    factory->NotifyStop();
    factory->Unitial();
    return all;
}

/// Hands notices of the account on, one at a time.
class Watcher : public IPDFVipSdkAdapter::IUserInfoChangeCallBack
{
public:
    explicit Watcher(const std::function<void(const Json &)> &print) : m_print(print) { }

    void OnUserInfoChange(const UserInfo &info) override { tell("OnUserInfoChange", info); }
    void OnLogoutForeverUserInfoChange(const UserInfo &info) override { tell("OnLogoutForeverUserInfoChange", info); }

    void tell(const char *notice, const UserInfo &info)
    {
        Json all = {{"notice", notice}, {"IsLogin", CPDFVipSdkAdapter::GetInstance()->IsLogin()}};
        all.update(toJson(info));
        const std::lock_guard lock(m_mutex);
        m_print(all);
    }

private:
    std::mutex m_mutex;
    const std::function<void(const Json &)> &m_print;
};

} // namespace

Json account()
{
    const Account running;
    return answers();
}

Json login(const std::vector<std::string> &arguments)
{
    if (arguments.size() != 1)
        throw WrongUse("login takes an e-mail address, or --dialog");
    if (arguments[0] == "--dialog")
        return loginByDialog();
    const Account account;
    const QString password = QString::fromStdString(readSecret("Password: "));
    int code = 0;
    bool isNew = false;
    if (!OndVipGeneratorUtil::Login(QString::fromStdString(arguments[0]), password, code, isNew))
        throw std::runtime_error("login failed with code " + std::to_string(code));
    Json all = {{"isNewAccount", isNew}};
    all.update(answers());
    return all;
}

Json logout(const std::vector<std::string> &arguments)
{
    if (!arguments.empty())
        throw WrongUse("logout takes no argument");
    const Account account;
    if (!account->Logout())
        throw std::runtime_error("the session cannot be ended");
    return answers();
}

Json openPage(const std::vector<std::string> &arguments)
{
    if (arguments.empty() || arguments.size() > 3)
        throw WrongUse("page takes a page, and may take an entry point and a feature");
    const auto page = static_cast<IPDFVipSdkAdapter::VIP_GUI_PAGE>(number(arguments[0]));
    const int from = arguments.size() > 1 ? number(arguments[1]) : 0;
    const int fid = arguments.size() > 2 ? number(arguments[2]) : 0;
    const Account account;
    const QString line = account.adapter() ? account.adapter()->GetOpenVipCommandLine(page, from, fid, false) : "";
    return {{"GetOpenVipCommandLine", line.toStdString()},
            {"OpenVipGUIPage", account->OpenVipGUIPage(page, from, fid, false, {})}};
}

void watch(const std::vector<std::string> &arguments, const std::function<void(const Json &)> &print)
{
    if (!arguments.empty())
        throw WrongUse("watch takes no argument");
    // Blocked before the SDK starts its threads, so that the signals come here and end the watch in order.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);

    const Account account;
    Watcher watcher(print);
    account->RegisterUserInfoChangeCallBack(&watcher);
    UserInfo user;
    account->GetLocalUserInfo(user);
    watcher.tell("now", user);
    int signal = 0;
    sigwait(&ends, &signal);
    account->UnRegisterUserInfoChangeCallBack(&watcher);
}

} // namespace inspect
