#include "paths/platform/FileManager_p.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace platform {

bool revealFile(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

} // namespace platform
