#include "tools/inspect/Account.h"

#include "account/CPDFRookVipSdkAdapter.h"
#include "account/CPDFVipSdkAdapter.h"
#include "account/OndVipGeneratorUtil.h"
#include "account/ui/OndVipInternationFactory.h"
#include "config/CPDFEdition.h"
#include "config/QtVersion_p.h"
#include "tools/common/LoginError.h"
#include "tools/inspect/Actions.h"
#include "tools/inspect/Terminal.h"

#include <identity.h>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QDateTime>
#include <QSysInfo>
#include <chrono>
#include <csignal>
#include <memory>
#include <mutex>
#include <unistd.h>
#include <utility>

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

/// Opens account pages through the account helper, as the adapter does, and looks for a moment whether it goes on.
class HelperPages : public IVipPageProvider
{
public:
    explicit HelperPages(QString line) : m_line(std::move(line)) { }

    bool OpenLoginPage(Page, int, int, bool, Privilege) override { return runs(); }
    bool OpenVipPage(Page, int, int, bool, Privilege) override { return runs(); }
    bool OpenHostPage(Page, int, int, bool, Privilege) override { return false; }

private:
    [[nodiscard]] bool runs() const
    {
        if (m_line.isEmpty())
            return false;
        std::vector<std::string> words = {accountHelperPath()};
        for (const QString &word : m_line.split(QLatin1Char(' ')))
            words.push_back(word.toStdString());
        // A helper without a display ends, on a busy machine a good while after its start.
        const bool hasDisplay = QSysInfo::kernelType() == QLatin1String("darwin")
            || qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
            || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
        return isStarted(words, std::chrono::seconds(hasDisplay ? 2 : 30));
    }

    QString m_line;
};

/// Hands notices of the account on, one at a time.
class Watcher : public IPDFVipSdkAdapter::IUserInfoChangeCallBack
{
public:
    explicit Watcher(const Print &print) : m_print(print) { }

    void OnUserInfoChange(const UserInfo &info) override { tell("OnUserInfoChange", info); }
    void OnLogoutForeverUserInfoChange(const UserInfo &info) override { tell("OnLogoutForeverUserInfoChange", info); }

    void tell(const char *notice, const UserInfo &info)
    {
        Json all = {{"time", QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toStdString()},
                    {"notice", notice},
                    {"IsLogin", CPDFVipSdkAdapter::GetInstance()->IsLogin()}};
        all.update(toJson(info));
        const std::lock_guard lock(m_mutex);
        try {
            m_print(all);
        } catch (const std::exception &) {
            m_wasPrinted = false;
            ::kill(::getpid(), SIGTERM); // nobody reads on
        }
    }
    [[nodiscard]] bool wasPrinted()
    {
        const std::lock_guard lock(m_mutex);
        return m_wasPrinted;
    }

private:
    std::mutex m_mutex;
    const Print &m_print;
    bool m_wasPrinted = true;
};

} // namespace

std::string accountHelperPath()
{
    CPDFEdition *edition = CPDFEdition::GetInstance();
    edition->Initialize(edition->GetEdition());
    return narrow(edition->GetParentAppDir()) + product::kAccountHelper.str();
}

Json account()
{
    const Account running;
    return answers();
}

Run login(CLI::App &command)
{
    auto email = std::make_shared<std::string>();
    auto usesDialog = std::make_shared<bool>(false);
    CLI::Option *address = command.add_option("EMAIL", *email, "Whose account; made when there is none");
    address->option_text(" ");
    command.add_flag("--dialog", *usesDialog, "Show the product's login dialog")->excludes(address);
    return [email, usesDialog, address](const Print &print) {
        if (*usesDialog) {
            const Json all = loginByDialog();
            print(all);
            return all.at("IsLogin").get<bool>();
        }
        if (address->empty())
            throw WrongUse("login takes an e-mail address, or --dialog");
        const Account account;
        const QString password = QString::fromStdString(readSecret("Password: "));
        int code = 0;
        bool isNew = false;
        if (!OndVipGeneratorUtil::Login(QString::fromStdString(*email), password, code, isNew))
            throw std::runtime_error("login failed, " + loginErrorText(code));
        Json all = {{"isNewAccount", isNew}};
        all.update(answers());
        print(all);
        return true;
    };
}

Run logout(CLI::App & /*command*/)
{
    return [](const Print &print) {
        const Account account;
        if (!account->Logout())
            throw std::runtime_error("the session cannot be ended");
        print(answers());
        return true;
    };
}

Run openPage(CLI::App &command)
{
    struct Numbers
    {
        int page = 0;
        int from = 0;
        int fid = 0;
    };
    auto numbers = std::make_shared<Numbers>();
    command.add_option("PAGE", numbers->page, "Number of the page: 1 to log in, 2 the account, ...")
        ->required()
        ->option_text(" ");
    command.add_option("FROM", numbers->from, "Number of the entry point")->option_text(" ");
    command.add_option("FID", numbers->fid, "Number of the feature")->option_text(" ");
    return [numbers](const Print &print) {
        const auto page = static_cast<IPDFVipSdkAdapter::VIP_GUI_PAGE>(numbers->page);
        const Account account;
        QString line;
        if (CPDFRookVipSdkAdapter *adapter = account.adapter())
            line = adapter->GetOpenVipCommandLine(page, numbers->from, numbers->fid, false);
        HelperPages pages(line);
        account->setPageProvider(&pages);
        const bool isOpen = account->OpenVipGUIPage(page, numbers->from, numbers->fid, false, {});
        account->setPageProvider(nullptr);
        print({{"GetOpenVipCommandLine", line.toStdString()}, {"OpenVipGUIPage", isOpen}});
        return isOpen;
    };
}

Run watch(CLI::App & /*command*/)
{
    return [](const Print &print) {
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
        return watcher.wasPrinted();
    };
}

} // namespace inspect
