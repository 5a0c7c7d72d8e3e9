// The smallest host of the account: shows the login dialog, then says who is logged in.

#include "account/CPDFVipSdkAdapter.h"
#include "account/ui/OndVipInternationFactory.h"
#include "config/QtVersion_p.h"

#include <QApplication>
#include <iostream>

namespace {

/// Told of logins and logouts, also those in other processes of the user, on a thread of the membership SDK.
class Watcher : public IPDFVipSdkAdapter::IUserInfoChangeCallBack
{
public:
    void OnUserInfoChange(const IPDFVipSdkAdapter::LocalUserInfo &info) override
    {
        std::cout << "changed: " << info.email.toStdString() << std::endl;
    }
    void OnLogoutForeverUserInfoChange(const IPDFVipSdkAdapter::LocalUserInfo & /*info*/) override { }
};

} // namespace

int main(int argc, char *argv[])
{
    qt::drawAtScreenScale();
    const QApplication application(argc, argv);

    // First of all the translations, which need the application object; then the account and its thread of requests.
    auto *factory = OndVipInternationFactory::instance();
    factory->Initial();

    auto *account = CPDFVipSdkAdapter::GetInstance();
    Watcher watcher;
    account->RegisterUserInfoChangeCallBack(&watcher);

    // Where the user came from, for those who open other account pages; the dialog is the same for all.
    const int from = 0, feature = 0;
    factory->showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, from, feature, false, {});

    IPDFVipSdkAdapter::LocalUserInfo user;
    const bool loggedIn = account->IsLogin() && account->GetLocalUserInfo(user);
    std::cout << (loggedIn ? "logged in: " + user.email.toStdString() : "not logged in") << std::endl;

    // The other way round at the end: no new requests, then nothing at all.
    account->UnRegisterUserInfoChangeCallBack(&watcher);
    factory->NotifyStop();
    factory->Unitial();
    return loggedIn ? 0 : 1;
}
