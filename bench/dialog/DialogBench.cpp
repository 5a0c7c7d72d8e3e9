// Opening the login dialog, from the call to the end of its first frame, against a QDialog with the same widgets and
// nothing else: once with the style sheets of the login dialog, which are its looks, and once bare. Warm is any opening
// after the first one of a process; cold is the first one, in a process of its own each time, after the application
// object is made. Between the two peers lies what Qt spends on reading
// style sheets and drawing by them; with all of it, the dialog is beyond the bound.

#include "account/ui/OndVipLoginUI.h"
#include "bench/support/Ratios.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>
#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <memory>

namespace {

using Time = std::chrono::steady_clock;

QDialog *makeLogin()
{
    return new OndVipLoginUI(IPDFVipSdkAdapter::VIP_GUI_PAGE_LOGIN, 0, 0, false, {});
}

/// The style sheet of each widget of the login dialog.
using Sheets = std::map<QString, QString>;

Sheets sheetsOfLogin()
{
    const std::unique_ptr<QDialog> login(makeLogin());
    Sheets sheets;
    for (const auto *widget : login->findChildren<QWidget *>()) {
        if (!widget->styleSheet().isEmpty())
            sheets[widget->objectName()] = widget->styleSheet();
    }
    return sheets;
}

QDialog *makeBare(const Sheets &sheets)
{
    auto *dialog = new QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint);
    dialog->setAttribute(Qt::WA_TranslucentBackground);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFixedSize(450, 560);
    auto *layout = new QVBoxLayout(dialog);
    const auto add = [&](QWidget *widget, const char *name) {
        const auto sheet = sheets.find(QLatin1String(name));
        if (sheet != sheets.end())
            widget->setStyleSheet(sheet->second);
        layout->addWidget(widget);
    };
    const auto label = [&](const char *text) {
        auto *made = new QLabel(text, dialog);
        made->setWordWrap(true);
        return made;
    };
    const auto edit = [&](const char *text) {
        auto *made = new QLineEdit(dialog);
        made->setPlaceholderText(text);
        return made;
    };
    add(label(""), "backgroundLabel");
    add(label(""), "logoLabel");
    add(label("Log in / Sign up PDF Orvell ID"), "titleLabel");
    add(label("Log in with an existing account or enter a valid email address below to create one."), "hintLabel");
    add(edit("Email"), "emailLineEdit");
    add(edit("Password"), "passwordLineEdit");
    add(new QCheckBox("Show Password", dialog), "showPasswordCheckBox");
    add(label(""), "errorLabel");
    add(new QPushButton("Log in / Sign up", dialog), "loginButton");
    add(new QPushButton("Forgot password?", dialog), "forgetPasswordButton");
    add(new QPushButton(dialog), "closeButton");
    return dialog;
}

/// Sees the end of a window's first frame: what was painted is on its way to the screen after the event.
class FirstFrame : public QObject
{
public:
    bool painted = false;

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

using Make = std::function<QDialog *()>;

double secondsToOpen(const Make &make)
{
    FirstFrame frame;
    const auto start = Time::now();
    QDialog *dialog = make();
    dialog->installEventFilter(&frame);
    dialog->show();
    while (!frame.painted)
        QCoreApplication::processEvents();
    const std::chrono::duration<double> time = Time::now() - start;
    dialog->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return time.count();
}

bench::Side again(const char *name, const Make &make)
{
    return {name, [=](benchmark::State &state) {
                secondsToOpen(make);
                for (auto _ : state)
                    state.SetIterationTime(secondsToOpen(make));
            }};
}

/// In a process of its own: "--login", or "--bare" with names and style sheets of widgets behind it.
bench::Side first(const char *name, const QStringList &arguments)
{
    return {name, [=](benchmark::State &state) {
                for (auto _ : state) {
                    QProcess process;
                    process.start(QCoreApplication::applicationFilePath(), arguments);
                    process.waitForFinished();
                    state.SetIterationTime(process.readAllStandardOutput().toDouble());
                }
            }};
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--login") {
        std::cout << secondsToOpen(makeLogin) << '\n';
        return 0;
    }
    if (arguments.value(1) == "--bare") {
        Sheets sheets;
        for (int i = 2; i + 1 < arguments.size(); i += 2)
            sheets[arguments[i]] = arguments[i + 1];
        std::cout << secondsToOpen([&] { return makeBare(sheets); }) << '\n';
        return 0;
    }

    const Sheets sheets = sheetsOfLogin();
    QStringList styled = {"--bare"};
    for (const auto &[name, sheet] : sheets)
        styled << name << sheet;
    const auto login = again("open the login dialog again", makeLogin);
    const auto loginFirst = first("open the login dialog first", {"--login"});
    const bench::Clock clock = bench::Clock::manual;
    bench::compare(login, bench::atMost(1.5), again("its widgets and sheets", [&] { return makeBare(sheets); }), clock);
    bench::compare(login, bench::atMost(1.5), again("its widgets, bare", [] { return makeBare({}); }), clock);
    bench::compare(loginFirst, bench::atMost(1.5), first("its widgets and sheets, first", styled), clock);
    bench::compare(loginFirst, bench::atMost(1.5), first("its widgets, bare, first", {"--bare"}), clock);
    return bench::run(argc, argv);
}
