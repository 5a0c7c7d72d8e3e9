#include <gtest/gtest.h>

#include "account/CPDFVipSdkAdapter.h"
#include "tests/account/ui/LoginDialog.h"
#include "tests/support/TestFiles.h"

using test::LoginDialog;
using test::runLoginDialog;

// The built library on top of the local membership SDK.
TEST(LocalAccount, IsMadeUsedAndLeftAloneByTheDialog)
{
    const test::TempDir home;
    qputenv("ONDVIPSDK_DATA_DIR", home.path().c_str());
    qputenv("QT_SCALE_FACTOR", "2");
    int argumentCount = 1;
    char name[] = "test";
    char *arguments[] = {name, nullptr};
    const QApplication application(argumentCount, arguments);
    auto *factory = OndVipInternationFactory::instance();
    factory->Initial();

    runLoginDialog([](const LoginDialog &login) {
        EXPECT_EQ(login.find<QLabel>("backgroundLabel")->pixmap(Qt::ReturnByValue).devicePixelRatio(), 2);
        login.logIn("new@example.com", "secret");
        EXPECT_TRUE(login.waitForEnd());
    });
    IPDFVipSdkAdapter::LocalUserInfo user;
    EXPECT_TRUE(CPDFVipSdkAdapter::GetInstance()->GetLocalUserInfo(user));
    EXPECT_EQ(user.email, "new@example.com");

    runLoginDialog([](const LoginDialog &login) {
        login.logIn("new@example.com", "wrong");
        EXPECT_TRUE(login.waitForFailure());
        EXPECT_EQ(login.error(), "Login failed, password error");
    });
    for (int i = 0; i < 25; ++i) {
        runLoginDialog([i](const LoginDialog &login) {
            login.logIn("new@example.com", "wrong"); // a late success would close the next dialog
            QTest::qWait(i % 7);
        });
    }
    factory->NotifyStop();
    factory->Unitial();
}
