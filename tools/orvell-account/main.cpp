#include "account/CPDFVipSdkAdapter.h"
#include "account/OndVipGeneratorUtil.h"
#include "account/ui/OndVipInternationFactory.h"
#include "config/QtVersion_p.h"
#include "tools/common/Escaped.h"
#include "tools/common/Fatal.h"
#include "tools/common/LoginError.h"
#include "tools/orvell-account/CommandLine.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <iostream>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUse = 2 };

int fail(const std::string &message, ExitStatus status = kFailed)
{
    std::cerr << "orvell-account: " << escaped(message) << '\n';
    return status;
}

/// Shows the login dialog until it is closed.
int login()
{
    OndVipInternationFactory *factory = OndVipInternationFactory::instance();
    factory->Initial();
    factory->showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, 0, 0, false, {});
    const bool isLogin = CPDFVipSdkAdapter::GetInstance()->IsLogin();
    factory->NotifyStop();
    factory->Unitial();
    return isLogin ? kDone : kFailed;
}

/// Whether the user wants to lose the account. Escape, Return and closing the window say no.
bool isWanted(const QString &name, int argc, char **argv)
{
    qt::drawAtScreenScale();
    const QApplication application(argc, argv);
    QMessageBox box(QMessageBox::Warning, QStringLiteral("PDF Orvell ID"),
                    QStringLiteral("Delete the account %1?").arg(name), QMessageBox::Cancel);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QStringLiteral("It cannot be brought back."));
    box.setDefaultButton(QMessageBox::Cancel);
    const QPushButton *yes = box.addButton(QStringLiteral("Delete Account"), QMessageBox::DestructiveRole);
    box.exec();
    return box.clickedButton() == yes;
}

/// The account while it is in use.
struct Account
{
    Account() { adapter->Initialize(true); }
    ~Account() { adapter->Uninitialize(); }
    Account(const Account &) = delete;
    Account &operator=(const Account &) = delete;

    CPDFVipSdkAdapter *const adapter = CPDFVipSdkAdapter::GetInstance();
};

int logoutForever(bool isConfirmed, int argc, char **argv)
{
    using User = IPDFVipSdkAdapter::LocalUserInfo;
    const Account account;
    User asked, now;
    account.adapter->GetLocalUserInfo(asked);
    if (!isConfirmed && account.adapter->IsLogin()) {
        if (!isWanted(asked.email.isEmpty() ? QString::fromStdWString(asked.nickname) : asked.email, argc, argv))
            return kFailed;
        account.adapter->GetLocalUserInfo(now);
        if (now.open_id != asked.open_id)
            return fail("somebody else is logged in by now");
    }
    int result = 0;
    if (!account.adapter->LogoutForever(&result))
        return fail("the account cannot be logged out for good: " + loginErrorText(result));
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
    endInsteadOfAborting("orvell-account");
    try {
        const Command command = parse({argv + 1, argv + argc});
        if (!command.text.empty()) {
            std::cout << command.text << std::flush;
            return std::cout ? kDone : fail("the text cannot be written");
        }
        if (command.action == Command::Action::logoutForever)
            return logoutForever(command.isConfirmed, argc, argv);
        qt::drawAtScreenScale();
        const QApplication application(argc, argv);
        if (command.action == Command::Action::login)
            return login();
        return openPage(command.url);
    } catch (const WrongUse &error) {
        return fail(error.what(), kWrongUse);
    } catch (const std::exception &error) {
        return fail(error.what());
    }
}
