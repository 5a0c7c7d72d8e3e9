#include <QCoreApplication>
#include <account/CPDFVipSdkAdapter.h>
#include <iostream>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    CPDFVipSdkAdapter *account = CPDFVipSdkAdapter::GetInstance();
    account->Initialize(true);
    IPDFVipSdkAdapter::LocalUserInfo user;
    if (account->IsLogin() && account->GetLocalUserInfo(user))
        std::cout << user.email.toStdString() << " is logged in\n";
    else
        std::cout << "nobody is logged in\n";
    account->Uninitialize();
}
