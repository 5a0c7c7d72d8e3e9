#include "paths/platform/FileManager.h"

#include <QProcess>

namespace platform {

bool revealFile(const QString &path)
{
    return QProcess::startDetached(QStringLiteral("open"), {QStringLiteral("-R"), path});
}

} // namespace platform
