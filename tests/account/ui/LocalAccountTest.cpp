#include <gtest/gtest.h>

#include "account/CPDFVipSdkAdapter.h"
#include "tests/account/ui/LoginDialog.h"
#include "tests/support/TestFiles.h"

#include <QAccessible>
#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qpa/qplatformaccessibility.h>
#include <QtGui/qpa/qplatformintegration.h>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

using test::LoginDialog;
using test::runLoginDialog;

namespace {

std::vector<QAccessibleInterface *> perceivable(QAccessibleInterface *root)
{
    std::vector<QAccessibleInterface *> found;
    for (int i = 0; i < root->childCount(); ++i) {
        QAccessibleInterface *child = root->child(i);
        if (child->state().invisible)
            continue;
        if (child->role() != QAccessible::Client) // a frame without a meaning, says Qt
            found.push_back(child);
        const auto inner = perceivable(child);
        found.insert(found.end(), inner.begin(), inner.end());
    }
    return found;
}

/// What an assistive technology is told unasked, and what is to be seen then.
QStringList alerts;
std::function<void()> whenBusy;

void hear(QAccessibleEvent *event)
{
    if (event->type() == QAccessible::Alert)
        alerts += event->accessibleInterface()->text(QAccessible::Name);
    if (event->type() == QAccessible::Alert && whenBusy)
        std::exchange(whenBusy, nullptr)();
}

/// The dialog as an assistive technology has it.
struct Accessible
{
    QAccessibleInterface *dialog;

    explicit Accessible(const LoginDialog &login) : dialog(QAccessible::queryAccessibleInterface(login.dialog)) { }
    [[nodiscard]] QAccessibleInterface *find(QAccessible::Role role, const QString &name) const
    {
        for (QAccessibleInterface *each : perceivable(dialog)) {
            if (each->role() == role && each->text(QAccessible::Name) == name)
                return each;
        }
        throw std::runtime_error("no " + name.toStdString());
    }
    void enter(const QString &name, const QString &text) const
    {
        find(QAccessible::EditableText, name)->editableTextInterface()->insertText(0, text);
    }
    void act(QAccessible::Role role, const QString &name, const QString &action) const
    {
        find(role, name)->actionInterface()->doAction(action);
    }
};

} // namespace

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

    QAccessible::installUpdateHandler(hear);
    // As a screen reader that starts up does; Qt has no public way.
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    const auto press = QAccessibleActionInterface::pressAction(), toggle = QAccessibleActionInterface::toggleAction();
    runLoginDialog([&](const LoginDialog &login) {
        const Accessible screen(login);
        EXPECT_EQ(screen.dialog->role(), QAccessible::Dialog);
        EXPECT_EQ(screen.dialog->text(QAccessible::Name), "Log in / Sign up PDF Orvell ID");
        for (QAccessibleInterface *each : perceivable(screen.dialog))
            EXPECT_NE(each->text(QAccessible::Name), "") << each->role() << qPrintable(each->object()->objectName());
        EXPECT_TRUE(screen.find(QAccessible::Graphic, "Logo"));
        screen.enter("Email", "new@example.com");
        screen.enter("Password", "wrong");
        EXPECT_TRUE(screen.find(QAccessible::EditableText, "Password")->state().passwordEdit);
        screen.act(QAccessible::CheckBox, "Show Password", toggle);
        EXPECT_TRUE(screen.find(QAccessible::CheckBox, "Show Password")->state().checked);
        EXPECT_FALSE(screen.find(QAccessible::EditableText, "Password")->state().passwordEdit);
        whenBusy = [&] {
            EXPECT_TRUE(screen.find(QAccessible::Button, "Logging in...")->state().disabled);
            EXPECT_FALSE(screen.find(QAccessible::ProgressBar, "Logging in...")->state().disabled);
            EXPECT_TRUE(screen.find(QAccessible::EditableText, "Email")->state().readOnly);
        };
        screen.act(QAccessible::Button, "Log in / Sign up", press);
        EXPECT_TRUE(QTest::qWaitFor([&] { return alerts.size() == 2; }, 60'000));
        EXPECT_TRUE(login.waitForFailure());
        EXPECT_EQ(alerts, QStringList({"Logging in...", "Login failed, password error"}));
        EXPECT_TRUE(screen.find(QAccessible::StaticText, "Login failed, password error"));
        EXPECT_FALSE(screen.find(QAccessible::EditableText, "Email")->state().readOnly);
        screen.enter("Password", "not ");
        EXPECT_EQ(screen.find(QAccessible::EditableText, "Password")->text(QAccessible::Value), "not wrong");
        screen.act(QAccessible::Button, "Close", press);
        EXPECT_TRUE(login.waitForEnd());
    });
    runLoginDialog([&](const LoginDialog &login) {
        const Accessible screen(login);
        screen.enter("Email", "new@example.com");
        screen.enter("Password", "secret");
        screen.act(QAccessible::Button, "Log in / Sign up", press);
        EXPECT_TRUE(login.waitForEnd());
        EXPECT_EQ(alerts.size(), 3);
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
