#include <QApplication>
#include <account/CPDFVipSdkAdapter.h>
#include <iostream>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    CPDFVipSdkAdapter *account = CPDFVipSdkAdapter::GetInstance();
    account->Initialize(true);
    const int from = 0, feature = 0; // where the user came from, for statistics
    const bool opened = account->OpenVipGUIPage(IPDFVipSdkAdapter::VIP_GUI_PAGE_MAIN, from, feature, false, {});
    std::cout << (opened ? "the account helper opens the page\n" : "there is no account helper\n");
    account->Uninitialize();
}
