#include "account/CPDFVipSdkAdapter.h"
#include "account/OndVipGeneratorUtil.h"
#include "account/ui/OndVipInternationFactory.h"
#include "config/QtVersion_p.h"
#include "tools/common/Escaped.h"
#include "tools/orvell-account/CommandLine.h"

#include <QApplication>
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

int logoutForever()
{
    CPDFVipSdkAdapter *account = CPDFVipSdkAdapter::GetInstance();
    account->Initialize(true);
    int result = 0;
    const bool isDone = account->LogoutForever(&result);
    account->Uninitialize();
    if (!isDone)
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
        if (command.action == Command::Action::logoutForever)
            return logoutForever();
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
