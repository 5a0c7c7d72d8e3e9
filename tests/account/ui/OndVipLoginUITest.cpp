#include <gtest/gtest.h>

#include "account/ui/ClickableLabel.h"
#include "account/ui/OndVipLoginUI.h"
#include "tests/account/ui/LoginDialog.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScriptedSdk.h"
#include "vipsdk/include/VipSdkDefine.h"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QSemaphore>
#include <QTextBrowser>
#include <algorithm>
#include <atomic>
#include <cmath>

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
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // deletes the pool, which waits for logins
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

/// Of two colours, as the Web Content Accessibility Guidelines (2.1) define it: 1 to 21.
double contrast(QColor first, QColor second)
{
    const auto luminance = [](QColor color) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(first), luminance(second)});
    return (lighter + 0.05) / (darker + 0.05);
}

constexpr const char *kFocusOrder[] = {"emailLineEdit", "passwordLineEdit",     "showPasswordCheckBox",
                                       "loginButton",   "forgetPasswordButton", "closeButton"};

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
            EXPECT_EQ(login.spaceBetween("hintLabel", "emailLineEdit"),
                      login.spaceBetween("showPasswordCheckBox", "loginButton"));
        }
        EXPECT_EQ(m_seen, L" A@b/p%1 ") << "as entered";
    });
}

TEST_F(Login, WorksByKeyboardAlone)
{
    QTextBrowser browser;
    QDesktopServices::setUrlHandler("https", &browser, "setSource");
    runLoginDialog([&](const LoginDialog &login) {
        for (const char *name : kFocusOrder) {
            EXPECT_EQ(login.dialog->focusWidget()->objectName(), name);
            login.type(Qt::Key_Tab);
        }
        login.type("a@b.example");
        login.type(Qt::Key_Tab);
        login.type("wrong");
        login.type(Qt::Key_Tab);
        for (const auto mode : {QLineEdit::Normal, QLineEdit::Password}) {
            login.type(Qt::Key_Space);
            EXPECT_EQ(login.find<QLineEdit>("passwordLineEdit")->echoMode(), mode);
        }
        m_code = vip_sdk::LOGIN_ERROR_WRONG_PASSWORD;
        login.type(Qt::Key_Tab);
        login.type(Qt::Key_Return);
        login.type("not taken while busy");
        EXPECT_TRUE(login.find<QWidget>("busyBar")->isVisible());
        const QImage before = login.dialog->grab().toImage();
        EXPECT_TRUE(QTest::qWaitFor([&] { return login.dialog->grab().toImage() != before; }, 60'000))
            << "something moves";
        m_answer.release(2);
        ASSERT_TRUE(login.waitForFailure());
        EXPECT_FALSE(login.find<QWidget>("busyBar")->isVisible());
        EXPECT_EQ(m_seen, L"a@b.example/wrong");

        for (int i = 0; i < 3; ++i)
            login.type(Qt::Key_Tab);
        login.type(Qt::Key_Return);
        EXPECT_TRUE(browser.source().toString().contains("/forgot-password?package_id=0&tid1=0&"));
        for (int i = 0; i < 3; ++i)
            login.type(Qt::Key_Backtab);
        login.type("right"); // which replaces what was selected by the key
        m_code = 0;
        login.type(Qt::Key_Return);
        EXPECT_TRUE(login.waitForEnd());
        EXPECT_EQ(m_seen, L"a@b.example/right");
    });
    for (const auto &[tabs, key] : {std::pair(0, Qt::Key_Escape), {5, Qt::Key_Return}, {5, Qt::Key_Space}}) {
        runLoginDialog([tabs = tabs, key = key](const LoginDialog &login) {
            login.logIn("a@b.example", "unanswered");
            login.find<QWidget>("emailLineEdit")->setFocus();
            for (int i = 0; i < tabs - 1; ++i) // over the disabled button
                login.type(Qt::Key_Tab);
            login.type(key);
            EXPECT_TRUE(login.waitForEnd()) << key;
        });
    }
}

TEST_F(Login, ShowsWhereTheFocusIs)
{
    runLoginDialog([](const LoginDialog &login) {
        const auto grab = [&] { return login.dialog->grab().toImage(); };
        login.find<QWidget>("emailLineEdit")->clearFocus();
        const QImage plain = grab();
        login.find<QWidget>("emailLineEdit")->setFocus();
        for (const char *name : kFocusOrder) {
            const QImage focused = grab();
            const auto *widget = login.find<QWidget>(name);
            QRect frame({widget->mapTo(login.dialog, QPoint()), widget->size()});
            frame.adjust(-3, -3, 3, 3);
            const QPoint middle = frame.center();
            for (const QPoint point : {QPoint(frame.left(), middle.y()), QPoint(frame.right(), middle.y()),
                                       QPoint(middle.x(), frame.top()), QPoint(middle.x(), frame.bottom())})
                EXPECT_GE(contrast(focused.pixelColor(point), plain.pixelColor(point)), 3) << name;
            login.type(Qt::Key_Tab);
        }
    });
}

TEST_F(Login, LooksAsDrawn)
{
    QPalette dark(Qt::black);
    dark.setColor(QPalette::Highlight, QColor(60, 90, 160));
    QApplication::setPalette(dark);
    QFont font = QApplication::font();
    font.setPointSizeF(2 * font.pointSizeF());
    QApplication::setFont(font);
    runLoginDialog([](const LoginDialog &login) {
        EXPECT_EQ(cutTexts(*login.dialog), QStringList());
        auto *email = login.find<QLineEdit>("emailLineEdit");
        email->setText(QString(100, 'm'));
        const QImage image = login.dialog->grab().toImage();
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "round corners";
        for (auto *widget : login.dialog->findChildren<QWidget *>()) {
            if (!widget->property("text").isValid() || widget->property("text").toString().isEmpty())
                continue;
            const QRect place =
                QRect(widget->mapTo(login.dialog, QPoint()), widget->size()).marginsRemoved({3, 3, 3, 3});
            QColor lightest = Qt::black, darkest = Qt::white;
            for (int i = 0; i < place.width() * place.height(); ++i) {
                const QColor color = image.pixelColor(place.topLeft() + QPoint(i % place.width(), i / place.width()));
                lightest = color.lightness() > lightest.lightness() ? color : lightest;
                darkest = color.lightness() < darkest.lightness() ? color : darkest;
            }
            EXPECT_GE(contrast(lightest, darkest), 3) << qPrintable(widget->objectName());
        }
        const int right = email->mapTo(login.dialog, email->rect().topRight()).x();
        for (int y = 0; y < email->height(); ++y)
            EXPECT_EQ(image.pixelColor(right - 5, email->mapTo(login.dialog, QPoint(0, y)).y()).lightness() < 100,
                      false);
        int dithered = 0;
        for (int x = 30; x < 90; ++x)
            dithered += image.pixel(x, 20) != image.pixel(x, 21) || image.pixel(x, 20) != image.pixel(x, 22) ? 1 : 0;
        EXPECT_GT(dithered, 20) << "no bands";
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
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_logins == 2; }, 60'000)) << "they go on";
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
        EXPECT_EQ(login.spaceBetween("hintLabel", "emailLineEdit"),
                  login.spaceBetween("showPasswordCheckBox", "loginButton"));
    });
}
