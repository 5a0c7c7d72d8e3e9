#include "paths/platform/Applications_p.h"

#include "paths/platform/Bundle_p.h"
#include "paths/platform/UserDirectories_p.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace platform {

namespace fs = std::filesystem;

namespace {

std::string homeFolder()
{
    const char *home = std::getenv("HOME");
    return home && *home == '/' ? home : homeDirectoryOfUser();
}

bool hasDesktopEntry(const fs::path &dataFolder, const std::string &bundleId)
{
    std::error_code error;
    return dataFolder.is_absolute()
        && fs::is_regular_file(dataFolder / "applications" / (bundleId + ".desktop"), error);
}

bool hasDesktopEntry(const std::string &bundleId)
{
    if (hasDesktopEntry(applicationSupportDirectory(), bundleId))
        return true;
    const char *set = std::getenv("XDG_DATA_DIRS");
    std::istringstream folders(set && *set ? set : "/usr/local/share:/usr/share");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (hasDesktopEntry(folder, bundleId))
            return true;
    }
    return false;
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
