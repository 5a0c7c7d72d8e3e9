#include "paths/platform/Menu_p.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>

namespace platform {

namespace {

/// The menu bar of the active window, else of the first window that has one.
QMenuBar *mainMenu()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return nullptr;
    QWidgetList windows = QApplication::topLevelWidgets();
    if (QWidget *active = QApplication::activeWindow())
        windows.prepend(active);
    for (const QWidget *window : qAsConst(windows)) {
        if (auto *bar = window->findChild<QMenuBar *>())
            return bar;
    }
    return nullptr;
}

/// The title as the user reads it: "&" marks the key that opens the item, and "&&" stands for one.
QString withoutMnemonic(QString title)
{
    const QRegularExpression mark("&(.?)");
    return title.replace(mark, "\\1");
}

/// A text for an item that shows this title, and has no such key.
QString withoutKey(QString title)
{
    return title.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

void retitleSubmenuItems(const std::function<std::optional<QString>(const QString &title)> &newTitle)
{
    const QMenuBar *bar = mainMenu();
    if (!bar)
        return;
    for (const QAction *top : bar->actions()) {
        if (!top->menu())
            continue;
        for (QAction *item : top->menu()->actions()) {
            if (const std::optional<QString> title = newTitle(withoutMnemonic(item->text())))
                item->setText(withoutKey(*title));
        }
    }
}

} // namespace platform
