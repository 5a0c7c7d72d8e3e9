#include "paths/platform/Idle_p.h"

#include "paths/platform/Clock_p.h"

#include <QCoreApplication>
#include <QEvent>
#include <atomic>
#include <cstdint>
#include <limits>

namespace platform {

namespace {

/// Ticks at the last input, or 0 without an application object.
std::atomic<std::uint64_t> g_lastInput{0};

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

class InputWatch : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (isInput(event->type()))
            g_lastInput = monotonicNanoseconds();
        return false;
    }
};

void watchInput()
{
    g_lastInput = monotonicNanoseconds();
    QCoreApplication::instance()->installEventFilter(new InputWatch(QCoreApplication::instance()));
    qAddPostRoutine([] { g_lastInput = 0; });
}

} // namespace

// Runs when the application object is made, since an input that nobody watched for cannot be asked for afterwards.
Q_COREAPP_STARTUP_FUNCTION(watchInput)

double secondsSinceLastInput()
{
    const std::uint64_t last = g_lastInput;
    if (last == 0)
        return std::numeric_limits<double>::infinity();
    return static_cast<double>(monotonicNanoseconds() - last) / 1e9;
}

} // namespace platform
