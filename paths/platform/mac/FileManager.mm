#include "paths/platform/FileManager_p.h"

#include <QProcess>

namespace platform {

bool revealFile(const QString &path)
{
    return QProcess::startDetached(QStringLiteral("open"), {QStringLiteral("-R"), path});
}

} // namespace platform
