#include "paths/platform/FileManager.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace platform {

bool revealFile(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

} // namespace platform
