#include "paths/platform/Screen_p.h"

#include <QGuiApplication>
#include <QScreen>

namespace platform {

std::pair<double, double> mainScreenSize()
{
    const QScreen *screen =
        qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QGuiApplication::primaryScreen() : nullptr;
    if (!screen)
        return {0.0, 0.0};
    const QSizeF size = screen->size();
    return {size.width(), size.height()};
}

} // namespace platform
