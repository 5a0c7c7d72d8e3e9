// A plugin of Qt that types what OND_TEST_KEYS says into the first dialog that opens.

#include <QApplication>
#include <QGenericPlugin>
#include <QTimer>
#include <QtTest>

class Typist : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "Typist.json")

public:
    QObject *create(const QString & /*key*/, const QString & /*arguments*/) override
    {
        auto *timer = new QTimer;
        connect(timer, &QTimer::timeout, timer, [timer] {
            const QWidget *dialog = QApplication::activeModalWidget();
            if (!dialog || !dialog->focusWidget() || !dialog->isActiveWindow())
                return;
            timer->stop();
            for (const char key : qgetenv("OND_TEST_KEYS"))
                QTest::keyClick(dialog->focusWidget(), key);
        });
        timer->start(20);
        return timer;
    }
};

#include "Typist.moc"
