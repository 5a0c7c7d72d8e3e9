#include "paths/platform/UserDirectories_p.h"

#include <QDir>
#include <QStandardPaths>

namespace platform {

std::string applicationSupportDirectory()
{
    const QString data = QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    // QStandardPaths takes relative folders as they are, and the root for a home that HOME does not tell.
    if (data.startsWith(QLatin1Char('/')) && data != QLatin1String("/.local/share"))
        return data.toStdString();
    const std::string home = homeDirectoryOfUser();
    return home.empty() ? home : home + "/.local/share";
}

std::string groupContainer(const std::string &groupId)
{
    // Groups are no concept of this system: any folder that every process of the user finds will do.
    const std::string data = applicationSupportDirectory();
    return data.empty() ? data : data + "/group-containers/" + groupId;
}

} // namespace platform
