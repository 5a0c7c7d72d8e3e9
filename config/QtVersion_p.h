#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QSettings>

/// What Qt 5 and Qt 6 spell differently. Nothing else asks for the version, but for the check in Export.h.
namespace qt {

/// To be called before the application object: Qt 6 always draws at the screen's scale, Qt 5 when told.
inline void drawAtScreenScale()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
#endif
}

/// The place of the pointer in the widget that gets the event.
inline QPointF position(const QMouseEvent &event)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return event.localPos();
#else
    return event.position();
#endif
}

/// Qt 6 knows no other encoding of INI files than UTF-8.
inline void readAsUtf8(QSettings &settings)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    settings.setIniCodec("UTF-8");
#else
    Q_UNUSED(settings)
#endif
}

} // namespace qt
