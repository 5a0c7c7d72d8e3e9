#include "tools/common/Fatal.h"

#include <QString>
#include <QtGlobal>
#include <cstdlib>
#include <iostream>

void endInsteadOfAborting(const char *program)
{
    static const char *name = program;
    static QtMessageHandler before = nullptr;
    before = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &message) {
        if (type != QtFatalMsg)
            return before(type, context, message);
        std::cerr << name << ": " << message.section(QLatin1Char('\n'), 0, 0).toStdString() << std::endl;
        std::_Exit(EXIT_FAILURE);
    });
}
