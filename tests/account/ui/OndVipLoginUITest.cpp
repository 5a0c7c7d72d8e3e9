#include "account/OndVipGeneratorUtil.h"
#include "account/ui/ClickableLabel.h"
#include "account/ui/OndVipInternationFactory.h"
#include "runtime/GlobalRequestTaskMgr.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScriptedSdk.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>
#include <algorithm>
#include <atomic>
#include <cmath>

/// The login dialog as its user has it, through mouse and keys, and logins that wait until they are answered.
struct Login : testing::Test
{
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
        m_factory->Initial();
    }
    void TearDown() override
    {
        m_answer.release(1000);
        m_factory->NotifyStop();
        m_factory->Unitial();
        EXPECT_TRUE(test::scriptedSdk().listeners.empty());
        EXPECT_FALSE(m_requests->stop()) << "no pool";
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // deletes the pool, which waits for logins
    }

    /// Shows the dialog, has `drive` use it, closes it when it is still open, and finds it destroyed afterwards.
    template <typename Drive> void run(Drive drive)
    {
        QTimer::singleShot(0, qApp, [&] {
            m_dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_TRUE(m_dialog && QTest::qWaitForWindowActive(m_dialog, 60'000));
            drive();
            if (m_dialog)
                m_dialog->close();
        });
        EXPECT_FALSE(m_factory->showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, 0, 0, false, {}));
        EXPECT_TRUE(m_dialog.isNull());
    }
    template <typename Widget = QWidget> [[nodiscard]] Widget *find(const char *name) const
    {
        return m_dialog->findChild<Widget *>(name);
    }
    [[nodiscard]] QString text(const char *name) const { return find(name)->property("text").toString(); }
    [[nodiscard]] QString focus() const { return m_dialog->focusWidget()->objectName(); }
    [[nodiscard]] QImage grab() const { return m_dialog->grab().toImage(); }
    /// Of a widget, in the dialog.
    [[nodiscard]] QRect place(const QWidget *widget) const
    {
        return {widget->mapTo(m_dialog.data(), QPoint()), widget->size()};
    }
    void type(const char *keys) const
    {
        for (; *keys; ++keys)
            QTest::keyClick(m_dialog->windowHandle(), *keys);
    }
    void logIn(const char *email, const char *password) const
    {
        find<QLineEdit>("emailLineEdit")->setText(email);
        find<QLineEdit>("passwordLineEdit")->setText(password);
        QTest::mouseClick(find("loginButton"), Qt::LeftButton);
    }
    /// Answers the login that waits.
    [[nodiscard]] bool fails(int code)
    {
        m_code = code;
        m_answer.release();
        return QTest::qWaitFor([this] { return find("loginButton")->isEnabled(); }, 60'000);
    }
    [[nodiscard]] bool ends() const
    {
        return QTest::qWaitFor([this] { return !m_dialog || !m_dialog->isVisible(); }, 60'000);
    }
    /// The widgets that their text does not fit into.
    [[nodiscard]] QStringList cut() const
    {
        QStringList names;
        for (const QWidget *widget : m_dialog->findChildren<QWidget *>())
            if (!widget->property("text").toString().isEmpty()
                && (widget->heightForWidth(widget->width()) > widget->height()
                    || (!widget->hasHeightForWidth() && widget->sizeHint().width() > widget->width())))
                names += widget->objectName();
        return names;
    }

    const test::FakeBundle m_bundle;
    int m_argumentCount = 0;
    const QApplication m_application{m_argumentCount, nullptr};
    OndVipInternationFactory *const m_factory = OndVipInternationFactory::instance();
    GlobalRequestTaskMgr *const m_requests = GlobalRequestTaskMgr::getInstance();
    QPointer<QDialog> m_dialog;
    QSemaphore m_answer;
    std::atomic<int> m_logins = 0, m_code = 0;
    std::wstring m_seen;
};

struct LoginOnADenseScreen : Login
{
    static void SetUpTestSuite() { qputenv("QT_SCALE_FACTOR", "2"); }
};

/// What an assistive technology finds, in its order: "role name".
static QStringList perceived(QAccessibleInterface *parent)
{
    QStringList found;
    for (int i = 0; i < parent->childCount(); ++i) {
        QAccessibleInterface *child = parent->child(i);
        if (child->state().invisible)
            continue;
        if (child->role() != QAccessible::Client) // a frame without a meaning, says Qt
            found += QVariant::fromValue(child->role()).toString() + ' ' + child->text(QAccessible::Name);
        found += perceived(child);
    }
    return found;
}

/// Of two colours, as the Web Content Accessibility Guidelines (2.1) define it: 1 to 21.
static double contrast(QColor first, QColor second)
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

TEST_F(Login, FailureIsWordedAndLeavesTheDialogReady)
{
    const std::pair<int, const char *> errors[] = {{4572010, "this email has been registered"},
                                                   {4572011, "name too long"},
                                                   {4572012, "email format wrong"},
                                                   {4572013, "account don't exists"},
                                                   {4572014, "password error"},
                                                   {-2147483647, "unknown error code -2147483647"}};
    run([&] {
        EXPECT_EQ(m_dialog->windowFlags(), 0x803);
        for (const auto &[email, password] : {std::pair{"a@b.example", ""}, {"", "secret"}}) {
            logIn(email, password);
            EXPECT_EQ(text("errorLabel"), "Please enter username and password") << email;
        }
        EXPECT_EQ(m_logins, 0);
        for (const auto &[code, message] : errors) {
            logIn(" A@b", "p%1 ");
            EXPECT_EQ(text("errorLabel"), "");
            EXPECT_EQ(text("loginButton"), "Logging in...");
            EXPECT_FALSE(find("loginButton")->isEnabled());
            EXPECT_EQ(test::fakePlatform().announcements.back(), "Logging in...");
            ASSERT_TRUE(fails(code)) << code;
            EXPECT_EQ(text("errorLabel"), QString("Login failed, ") + message);
            EXPECT_EQ(test::fakePlatform().announcements.back(), text("errorLabel"));
            EXPECT_EQ(text("loginButton"), "Log in / Sign up");
            EXPECT_EQ(focus(), "passwordLineEdit");
            EXPECT_FALSE(find("emailLineEdit")->testAttribute(Qt::WA_MacShowFocusRect)) << "a second frame";
            EXPECT_EQ(cut(), QStringList());
        }
        EXPECT_EQ(m_seen, L" A@b/p%1 ") << "as entered";
    });
}

TEST_F(Login, WorksByKeyboardAlone)
{
    QTextBrowser browser;
    QDesktopServices::setUrlHandler("https", &browser, "setSource");
    EXPECT_TRUE(OndVipGeneratorUtil::OpenBrowser("https://none"));
    run([&] {
        for (const char *name : kFocusOrder) {
            EXPECT_EQ(focus(), name);
            type("\t");
        }
        type("a@b.example\twrong\t");
        for (const auto mode : {QLineEdit::Normal, QLineEdit::Password}) {
            type(" ");
            EXPECT_EQ(find<QLineEdit>("passwordLineEdit")->echoMode(), mode);
        }
        type("\t\r");
        EXPECT_TRUE(find("busyBar")->isVisible());
        const QImage before = grab();
        EXPECT_TRUE(QTest::qWaitFor([&] { return grab() != before; }, 60'000)) << "something moves";
        ASSERT_TRUE(fails(4572014));
        EXPECT_FALSE(find("busyBar")->isVisible());
        EXPECT_EQ(m_seen, L"a@b.example/wrong");

        type("\t\t\t\r");
        EXPECT_TRUE(browser.source().toString().contains("/forgot-password?package_id=0&tid1=0&"));
        m_code = 0;
        m_answer.release();
        type("\t\t\tright\r"); // which replaces what was selected by the key
        EXPECT_TRUE(ends());
        EXPECT_EQ(m_seen, L"a@b.example/right");
    });
}

TEST_F(Login, IsClosedByKeyWhileLoggingIn)
{
    for (const char *keys : {"\x1b", "\t\t\t\t\r", "\t\t\t\t "}) { // over the disabled button
        run([&] {
            logIn("a@b.example", "unanswered");
            find("emailLineEdit")->setFocus();
            type(keys);
            EXPECT_TRUE(ends()) << testing::PrintToString(keys);
        });
    }
    m_answer.release(3);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_logins == 3; }, 60'000)) << "they go on";
}

TEST_F(LoginOnADenseScreen, IsSharpAndWorksWithAScreenReader)
{
    const auto at = [this](const char *name) { return QAccessible::queryAccessibleInterface(find(name)); };
    const auto press = QAccessibleActionInterface::pressAction(), toggle = QAccessibleActionInterface::toggleAction();
    run([&] {
        for (const char *picture : {"backgroundLabel", "logoLabel"})
            EXPECT_EQ(find<QLabel>(picture)->pixmap(Qt::ReturnByValue).devicePixelRatio(), 2) << picture;
        QAccessibleInterface *screen = QAccessible::queryAccessibleInterface(m_dialog);
        EXPECT_EQ(screen->text(QAccessible::Name), "Log in / Sign up PDF Orvell ID");
        EXPECT_EQ(
            perceived(screen),
            QStringList({"Graphic Logo", "StaticText Log in / Sign up PDF Orvell ID", "StaticText " + text("hintLabel"),
                         "EditableText Email", "EditableText Password", "CheckBox Show Password",
                         "Button Log in / Sign up", "Button Forgot password?", "Button Close"}));
        at("emailLineEdit")->editableTextInterface()->insertText(0, "a@b.example");
        at("passwordLineEdit")->editableTextInterface()->insertText(0, "wrong");
        EXPECT_TRUE(at("passwordLineEdit")->state().passwordEdit);
        at("showPasswordCheckBox")->actionInterface()->doAction(toggle);
        EXPECT_FALSE(at("passwordLineEdit")->state().passwordEdit);
        at("loginButton")->actionInterface()->doAction(press);
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_logins == 1; }, 60'000));
        EXPECT_TRUE(perceived(screen).contains("ProgressBar Logging in..."));
        EXPECT_TRUE(at("emailLineEdit")->state().readOnly);
        ASSERT_TRUE(fails(4572014));
        EXPECT_TRUE(perceived(screen).contains("StaticText Login failed, password error"));
        EXPECT_FALSE(at("emailLineEdit")->state().readOnly);
        at("closeButton")->actionInterface()->doAction(press);
        EXPECT_TRUE(ends());
    });
}

TEST_F(Login, ShowsWhereTheFocusIs)
{
    run([this] {
        find("emailLineEdit")->clearFocus();
        const QImage plain = grab();
        find("emailLineEdit")->setFocus();
        for (const char *name : kFocusOrder) {
            const QImage focused = grab();
            const QRect frame = place(find(name)).adjusted(-3, -3, 3, 3);
            const QPoint middle = frame.center();
            for (const QPoint point : {QPoint(frame.left(), middle.y()), QPoint(frame.right(), middle.y()),
                                       QPoint(middle.x(), frame.top()), QPoint(middle.x(), frame.bottom())})
                EXPECT_GE(contrast(focused.pixelColor(point), plain.pixelColor(point)), 3) << name;
            type("\t");
        }
        const auto *frame = m_dialog->findChild<QFocusFrame *>();
        QWidget other;
        QLineEdit edit(&other);
        other.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other, 60'000));
        edit.setFocus();
        EXPECT_EQ(frame->widget(), nullptr) << "another window's focus is its own affair";
    });
}

TEST_F(Login, IsReadableWhateverTheUsersColoursAndFont)
{
    QPalette dark(Qt::black);
    dark.setColor(QPalette::Highlight, QColor(60, 90, 160));
    QApplication::setPalette(dark);
    QFont font = QApplication::font();
    font.setPointSizeF(2 * font.pointSizeF());
    QApplication::setFont(font);
    run([this] {
        EXPECT_EQ(cut(), QStringList());
        auto *email = find<QLineEdit>("emailLineEdit");
        email->setText(QString(100, 'm'));
        const QImage image = grab();
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "round corners";
        for (const QWidget *widget : m_dialog->findChildren<QWidget *>()) {
            if (widget->property("text").toString().isEmpty())
                continue;
            QRect inner = place(widget).adjusted(3, 3, -3, -3);
            inner.setWidth(inner.width() / 4 * 4); // else lines of pixels are filled up
            const QImage part = image.copy(inner).convertToFormat(QImage::Format_Grayscale8);
            const auto [darkest, lightest] =
                std::minmax_element(part.constBits(), part.constBits() + part.sizeInBytes());
            EXPECT_GE(contrast(qRgb(*lightest, *lightest, *lightest), qRgb(*darkest, *darkest, *darkest)), 3)
                << qPrintable(widget->objectName());
        }
        const QRect margin(place(email).topRight() - QPoint(7, 0), QSize(4, email->height()));
        const QImage clear = image.copy(margin).convertToFormat(QImage::Format_Grayscale8);
        EXPECT_GE(*std::min_element(clear.constBits(), clear.constBits() + clear.sizeInBytes()), 100) << "not cut off";
    });
}

TEST_F(Login, IsDraggedFromTheStartDistanceOn)
{
    run([this] {
        const QPoint start = m_dialog->pos(), press(20, 450), little(5, -4), far(-6, 4);
        const auto drag = [&](QPoint moved, QPoint released) {
            QTest::mousePress(m_dialog->windowHandle(), Qt::LeftButton, {}, press);
            QTest::mouseMove(m_dialog->windowHandle(), press + moved);
            QTest::mouseRelease(m_dialog->windowHandle(), Qt::LeftButton, {}, press + released);
            return m_dialog->pos() - start;
        };
        EXPECT_EQ(drag(little, little), QPoint()) << "a click";
        EXPECT_EQ(drag(far, {}), far) << "the window follows the mouse";
        EXPECT_EQ(drag(far, little), 2 * far + little);

        ClickableLabel label("takes the mouse", m_dialog);
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
    EXPECT_FALSE(installTranslatorImpl({}));
    EXPECT_FALSE(installTranslatorImpl(":/res/language/pdftoolutils_xx.qm"));
    run([this] {
        logIn("a@b.example", "secret");
        ASSERT_TRUE(fails(5));
        EXPECT_EQ(text("errorLabel"), QStringLiteral("登录失败，未知错误码 5"));
        EXPECT_EQ(cut(), QStringList());
    });
}
