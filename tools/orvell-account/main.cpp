#include "account/CPDFVipSdkAdapter.h"
#include "account/OndVipGeneratorUtil.h"
#include "tools/common/Terminal.h"
#include "tools/orvell-account/CommandLine.h"

#include <QGuiApplication>
#include <iostream>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUse = 2 };

/// The account for the lifetime of a scope.
class Account
{
public:
    Account() { m_account->Initialize(true); }
    ~Account() { m_account->Uninitialize(); }
    Account(const Account &) = delete;
    Account &operator=(const Account &) = delete;

    CPDFVipSdkAdapter *operator->() const { return m_account; }

private:
    CPDFVipSdkAdapter *const m_account = CPDFVipSdkAdapter::GetInstance();
};

int fail(const std::string &message)
{
    std::cerr << "orvell-account: " << message << '\n';
    return kFailed;
}

int login()
{
    const Account account;
    const QString user = QString::fromStdString(readLine("E-mail: "));
    const QString password = QString::fromStdString(readSecret("Password: "));
    int code = 0;
    bool created = false;
    if (!OndVipGeneratorUtil::Login(user, password, code, created))
        return fail("login failed with code " + std::to_string(code));
    return kDone;
}

int logoutForever()
{
    const Account account;
    int result = 0;
    if (!account->LogoutForever(&result))
        return fail("the account cannot be logged out for good, code " + std::to_string(result));
    return kDone;
}

int openPage(const QString &url)
{
    const QString address =
        url.isEmpty() ? OndVipGeneratorUtil::GetUrlByConfig(IPDFVipSdkAdapter::VIP_GUI_PAGE_MAIN, true) : url;
    if (address.isEmpty())
        return fail("this product has no account pages on the web");
    if (!OndVipGeneratorUtil::OpenBrowser(address))
        return fail("no browser opens " + address.toStdString());
    return kDone;
}

} // namespace

int main(int argc, char *argv[])
{
    try {
        QStringList arguments;
        for (int i = 1; i < argc; ++i)
            arguments += QString::fromLocal8Bit(argv[i]);
        const Command command = parse(arguments);
        switch (command.action) {
        case Command::Action::login:
            return login();
        case Command::Action::logoutForever:
            return logoutForever();
        case Command::Action::openPage:
            break;
        }
        const QGuiApplication application(argc, argv);
        return openPage(command.url);
    } catch (const WrongUse &error) {
        std::cerr << "orvell-account: " << error.what() << '\n';
        return kWrongUse;
    } catch (const std::exception &error) {
        return fail(error.what());
    }
}
