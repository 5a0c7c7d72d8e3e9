#include "paths/platform/Applications_p.h"

#include "paths/platform/Bundle_p.h"
#include "paths/platform/UserDirectories_p.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace platform {

namespace fs = std::filesystem;

namespace {

std::string homeFolder()
{
    const char *home = std::getenv("HOME");
    return home && *home == '/' ? home : homeDirectoryOfUser();
}

bool hasDesktopEntry(const std::string &bundleId)
{
    const QString name = QString::fromStdString(bundleId + ".desktop");
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    return std::any_of(folders.begin(), folders.end(), [&name](const QString &folder) {
        return folder.startsWith(QLatin1Char('/')) && QFileInfo(QDir(folder), name).isFile();
    });
}

bool hasBundle(const fs::path &folder, const std::string &bundleId)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() == ".app" && bundleInfo(entry->path().string(), "CFBundleIdentifier") == bundleId)
            return true;
    }
    return false;
}

} // namespace

bool isApplicationInstalled(const std::string &bundleId)
{
    if (bundleId.empty() || bundleId.find('/') != std::string::npos)
        return false;
    return hasDesktopEntry(bundleId) || hasBundle("/Applications", bundleId)
        || hasBundle(homeFolder() + "/Applications", bundleId);
}

} // namespace platform
