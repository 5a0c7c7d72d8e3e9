#include <gtest/gtest.h>

#include "account/ui/ClickableLabel.h"
#include "account/ui/OndVipLoginUI.h"
#include "tests/account/ui/LoginDialog.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScriptedSdk.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QDesktopServices>
#include <QSemaphore>
#include <QTextBrowser>
#include <atomic>

using test::LoginDialog;
using test::runLoginDialog;

namespace {

int argumentCount = 1;
char programName[] = "test";
char *arguments[] = {programName, nullptr};

class Login : public testing::Test
{
protected:
    void SetUp() override
    {
        m_bundle.writeGlobalFile("[common]\napp_international=1\n");
        test::scriptedSdk().login = [this](const std::wstring &user, const std::wstring &password, int &code, bool &) {
            ++m_logins;
            m_answer.acquire();
            m_seen = user + L'/' + password;
            code = m_code;
            return m_code == 0;
        };
        OndVipInternationFactory::instance()->Initial();
    }
    void TearDown() override
    {
        m_answer.release(1000);
        OndVipInternationFactory::instance()->NotifyStop();
        OndVipInternationFactory::instance()->Unitial();
    }

    const test::FakeBundle m_bundle;
    const QApplication m_application{argumentCount, arguments};
    QSemaphore m_answer;
    std::atomic<int> m_logins = 0, m_code = 0;
    std::wstring m_seen;
};

/// What does not fit into its place.
QStringList cutTexts(const QDialog &dialog)
{
    QStringList cut;
    for (const auto *label : dialog.findChildren<QLabel *>()) {
        if (label->heightForWidth(label->width()) > label->height())
            cut += label->text();
    }
    for (const auto *button : dialog.findChildren<QAbstractButton *>()) {
        if (button->sizeHint().width() > button->width() && !button->text().isEmpty())
            cut += button->text();
    }
    return cut;
}

} // namespace

TEST_F(Login, FailureIsWordedAndLeavesTheDialogReady)
{
    const std::pair<int, const char *> errors[] = {{4572010, "this email has been registered"},
                                                   {4572011, "name too long"},
                                                   {4572012, "email format wrong"},
                                                   {4572013, "account don't exists"},
                                                   {4572014, "password error"},
                                                   {-2147483647, "unknown error code -2147483647"}};
    runLoginDialog([&](const LoginDialog &login) {
        EXPECT_EQ(login.dialog->windowFlags(), 0x803);
        for (const auto &[email, password] : {std::pair{"", ""}, {"a@b.example", ""}, {"", "secret"}}) {
            login.logIn(email, password);
            EXPECT_EQ(login.error(), "Please enter username and password") << email;
        }
        EXPECT_EQ(m_logins, 0);
        for (const auto &[code, message] : errors) {
            m_code = code;
            login.logIn(" A@b", "p%1 ");
            EXPECT_TRUE(login.error().isEmpty() && !login.loginButton()->isEnabled()) << code;
            EXPECT_EQ(login.loginButton()->text(), "Logging in...");
            m_answer.release();
            ASSERT_TRUE(login.waitForFailure()) << code;
            EXPECT_EQ(login.error(), QString("Login failed, ") + message);
            EXPECT_EQ(test::fakePlatform().announcements.back(), login.error());
            EXPECT_EQ(login.loginButton()->text(), "Log in / Sign up");
            EXPECT_EQ(login.dialog->focusWidget()->objectName(), "passwordLineEdit");
            EXPECT_EQ(cutTexts(*login.dialog), QStringList());
        }
        EXPECT_EQ(m_seen, L" A@b/p%1 ") << "as entered";
    });
}

TEST_F(Login, KeyboardAndScreenReaderReachAll)
{
    runLoginDialog([](const LoginDialog &login) {
        for (const char *next : {"emailLineEdit", "passwordLineEdit", "showPasswordCheckBox", "loginButton",
                                 "forgetPasswordButton", "closeButton"}) {
            QWidget *focused = login.dialog->focusWidget();
            EXPECT_EQ(focused->objectName(), next);
            EXPECT_NE(QAccessible::queryAccessibleInterface(focused)->text(QAccessible::Name), "") << next;
            login.press(Qt::Key_Tab);
        }
        for (const auto mode : {QLineEdit::Normal, QLineEdit::Password}) {
            login.click("showPasswordCheckBox");
            EXPECT_EQ(login.find<QLineEdit>("passwordLineEdit")->echoMode(), mode);
        }
        login.press(Qt::Key_Return);
        EXPECT_EQ(login.error(), "Please enter username and password");
        login.press(Qt::Key_Escape);
        EXPECT_TRUE(login.waitForEnd());
    });
}

TEST_F(Login, MayBeClosedWhileLoggingIn)
{
    for (int i = 0; i < 2; ++i) {
        runLoginDialog([](const LoginDialog &login) {
            login.logIn("a@b.example", "secret");
            login.click("closeButton");
        });
    }
    m_answer.release(2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_logins == 2; })) << "they go on";
}

TEST_F(Login, HearsOfItsLoginWhenAnotherDialogEnds)
{
    runLoginDialog([this](const LoginDialog &login) {
        auto other = std::make_unique<OndVipLoginUI>(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, 0, 0, false,
                                                     IPDFVipSdkAdapter::VIP_PRIVILEGE{});
        m_code = 5;
        login.logIn("a@b.example", "secret");
        other.reset();
        m_answer.release();
        EXPECT_TRUE(login.waitForFailure());
    });
}

TEST_F(Login, IsDraggedFromTheStartDistanceOn)
{
    runLoginDialog([](const LoginDialog &login) {
        QWindow *window = login.dialog->windowHandle();
        const QPoint start = login.dialog->pos(), press(20, 450), little(5, -4), far(-6, 4);
        const auto drag = [&](QPoint moved, QPoint released) {
            QTest::mousePress(window, Qt::LeftButton, {}, press);
            QTest::mouseMove(window, press + moved);
            QTest::mouseRelease(window, Qt::LeftButton, {}, press + released);
            return login.dialog->pos() - start;
        };
        EXPECT_EQ(drag(little, little), QPoint()) << "a click";
        EXPECT_EQ(drag(far, {}), far) << "the window follows the mouse";
        EXPECT_EQ(drag(far, little), 2 * far + little);

        ClickableLabel label("takes the mouse", login.dialog);
        label.setGeometry({press, label.sizeHint()});
        label.show();
        const QSignalSpy clicks(&label, &ClickableLabel::clicked);
        EXPECT_EQ(drag(far, far), 2 * far + little);
        EXPECT_EQ(clicks.size(), 1);
    });
}

TEST_F(Login, ForgottenPasswordIsTheBrowsersBusiness)
{
    QTextBrowser browser;
    QDesktopServices::setUrlHandler("https", &browser, "setSource");
    runLoginDialog([](const LoginDialog &login) { login.click("forgetPasswordButton"); });
    EXPECT_TRUE(browser.source().toString().contains("/forgot-password?package_id=0&tid1=0&"));
}

TEST_F(Login, SpeaksChineseWhenThatComesLast)
{
    ASSERT_TRUE(installTranslatorImpl(":/res/language/pdftoolutils_zh.qm"));
    EXPECT_FALSE(installTranslatorImpl({}) || installTranslatorImpl(":/res/language/pdftoolutils_xx.qm"));
    m_code = 5;
    runLoginDialog([this](const LoginDialog &login) {
        login.logIn("a@b.example", "secret");
        m_answer.release();
        ASSERT_TRUE(login.waitForFailure());
        EXPECT_EQ(login.error(), QStringLiteral("登录失败，未知错误码 5"));
        EXPECT_EQ(cutTexts(*login.dialog), QStringList());
    });
}
