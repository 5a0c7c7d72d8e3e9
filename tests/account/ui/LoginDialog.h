#pragma once

#include "account/ui/OndVipInternationFactory.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <functional>

namespace test {

/// The login dialog as its user has it: through mouse and keys.
struct LoginDialog
{
    QPointer<QDialog> dialog;

    template <typename Widget> [[nodiscard]] Widget *find(const char *name) const
    {
        return dialog->findChild<Widget *>(name);
    }
    [[nodiscard]] QPushButton *loginButton() const { return find<QPushButton>("loginButton"); }
    [[nodiscard]] QString error() const { return find<QLabel>("errorLabel")->text(); }
    void click(const char *name) const { QTest::mouseClick(find<QWidget>(name), Qt::LeftButton); }
    /// Real keys, for whatever has the focus.
    void type(Qt::Key key) const { QTest::keyClick(dialog->windowHandle(), key); }
    void type(const char *text) const
    {
        for (; *text; ++text)
            QTest::keyClick(dialog->windowHandle(), *text);
    }
    [[nodiscard]] int spaceBetween(const char *upper, const char *lower) const
    {
        const auto *above = find<QWidget>(upper), *below = find<QWidget>(lower);
        return below->geometry().top() - above->geometry().bottom() - 1;
    }
    void logIn(const QString &email, const QString &password) const
    {
        find<QLineEdit>("emailLineEdit")->clear();
        find<QLineEdit>("passwordLineEdit")->clear();
        QTest::keyClicks(find<QLineEdit>("emailLineEdit"), email);
        QTest::keyClicks(find<QLineEdit>("passwordLineEdit"), password);
        click("loginButton");
    }
    [[nodiscard]] bool waitForFailure() const
    {
        return QTest::qWaitFor([this] { return dialog && loginButton()->isEnabled(); }, 60'000);
    }
    [[nodiscard]] bool waitForEnd() const
    {
        return QTest::qWaitFor([this] { return !dialog || !dialog->isVisible(); }, 60'000);
    }
};

/// Runs the dialog, has `drive` use it, closes it when it is still open, and finds it destroyed afterwards.
inline void runLoginDialog(const std::function<void(const LoginDialog &)> &drive)
{
    LoginDialog used;
    QTimer::singleShot(0, qApp, [&] {
        used.dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        ASSERT_TRUE(used.dialog && QTest::qWaitForWindowActive(used.dialog, 60'000));
        drive(used);
        if (used.dialog)
            used.dialog->close();
    });
    EXPECT_FALSE(OndVipInternationFactory::instance()->showOndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, 0, 0,
                                                                         false, {}));
    EXPECT_TRUE(used.dialog.isNull());
}

} // namespace test
