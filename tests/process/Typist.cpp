// A plugin of Qt that types what OND_TEST_KEYS says into the first dialog that opens.

#include <QApplication>
#include <QGenericPlugin>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>

class Typist : public QObject
{
public:
    Typist()
    {
        QObject::connect(&m_timer, &QTimer::timeout, this, [this] { type(); });
        m_timer.start(20);
    }

private:
    void type()
    {
        const QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->focusWidget() || !dialog->isActiveWindow())
            return;
        m_timer.stop();
        for (const QChar key : qEnvironmentVariable("OND_TEST_KEYS")) {
            const int code = key == '\t' ? Qt::Key_Tab : key == '\r' ? Qt::Key_Return : 0;
            for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(kind, code, Qt::NoModifier, key);
                QCoreApplication::sendEvent(dialog->focusWidget(), &event);
            }
        }
    }

    QTimer m_timer;
};

class TypistPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "Typist.json")

public:
    QObject *create(const QString & /*key*/, const QString & /*arguments*/) override { return new Typist; }
};

#include "Typist.moc"
