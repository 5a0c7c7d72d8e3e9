#include "config/Locations_p.h"

#include "config/MacConfigPath.h"
#include "paths/Located_p.h"
#include "paths/MacPath.h"

#include <QDir>
#include <QFileInfo>
#include <unistd.h>

namespace locations {

namespace {

std::string userData()
{
    return located([] { return MacConfigPath::GetInstance()->GetUserDataPath({}); });
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
    return QString::fromStdString(located([&] { return MacConfigPath::GetInstance()->GetAppConfigPath(relative); }));
}

QString appConfig(bool create)
{
    return userDataDir(create) + QLatin1String("config.ini");
}

QString configData()
{
    return inApplication("cfgdata/cfgdata.ini");
}

QString versionConfig()
{
    return inApplication("data/mainversion.ini");
}

QString serverFile()
{
    return inApplication("ressrc\\chs\\upnest.svr");
}

QString applicationDir()
{
    return QString::fromStdString(MacPath::getAppDirPath());
}

QString parentAppDir()
{
    const std::string bundle = MacConfigPath::GetInstance()->GetMainAppRootDir();
    return bundle.empty() ? applicationDir() : QString::fromStdString(bundle + "Contents/MacOS/");
}

} // namespace locations
