#include "config/Locations_p.h"

#include "config/MacConfigPath_p.h"
#include "paths/MacPath.h"

#include <QDir>
#include <QFileInfo>
#include <unistd.h>

namespace locations {

namespace {

std::string userData()
{
    const MacConfigPath *paths = configPathOrNull();
    return paths ? paths->GetUserDataPath({}) : std::string();
}

} // namespace

QString created(const QString &folder)
{
    // Without a base folder it would be made wherever the process happens to stand.
    if (QDir::isAbsolutePath(folder) && !QFileInfo::exists(folder))
        QDir().mkpath(folder);
    return folder;
}

QString userDataDir(bool create)
{
    return create ? inUserData("") : QString::fromStdString(userData());
}

QString inUserData(const char *name)
{
    const std::string folder = userData();
    if (::access(folder.c_str(), F_OK) != 0) // the cheapest look: every getter takes it
        created(QString::fromStdString(folder));
    return QString::fromStdString(folder + name);
}

QString inApplication(const std::string &relative)
{
    const MacConfigPath *paths = configPathOrNull();
    return paths ? QString::fromStdString(paths->GetAppConfigPath(relative)) : QString();
}

// clang-format off
QString appConfig(bool create) { return userDataDir(create) + QLatin1String("config.ini"); }
QString configData() { return inApplication("cfgdata/cfgdata.ini"); }
QString versionConfig() { return inApplication("data/mainversion.ini"); }
QString serverFile() { return inApplication("ressrc\\chs\\upnest.svr"); }
QString applicationDir() { return QString::fromStdString(MacPath::getAppDirPath()); }
// clang-format on

QString parentAppDir()
{
    const MacConfigPath *paths = configPathOrNull();
    const std::string bundle = paths ? paths->GetMainAppRootDir() : std::string();
    return bundle.empty() ? applicationDir() : QString::fromStdString(bundle + "Contents/MacOS/");
}

} // namespace locations
