#include "paths/platform/FileManager_p.h"

#include <QProcess>

namespace platform {

bool revealFile(const QString &path)
{
    QProcess open;
    open.setProgram(QStringLiteral("/usr/bin/open"));
    open.setArguments({QStringLiteral("-R"), path});
    return open.startDetached();
}

} // namespace platform
