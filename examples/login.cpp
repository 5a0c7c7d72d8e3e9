#include <QApplication>
#include <account/CPDFVipSdkAdapter.h>
#include <account/ui/OndVipInternationFactory.h>
#include <iostream>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    // First of all the translations, which need the application object; then the account and its thread of requests.
    auto *factory = OndVipInternationFactory::instance();
    factory->Initial();

    // Where the user came from, for statistics.
    const int from = 0, feature = 0;
    factory->showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, from, feature, false, {});

    auto *account = CPDFVipSdkAdapter::GetInstance();
    IPDFVipSdkAdapter::LocalUserInfo user;
    const bool loggedIn = account->IsLogin() && account->GetLocalUserInfo(user);
    std::cout << (loggedIn ? "welcome, " + user.email.toStdString() : "not logged in") << '\n';

    // The other way round at the end: no new requests, then nothing at all.
    factory->NotifyStop();
    factory->Unitial();
}
