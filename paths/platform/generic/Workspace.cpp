#include "paths/platform/Workspace.h"

#include "paths/platform/Bundle.h"

#include <QDesktopServices>
#include <QUrl>
#include <algorithm>
#include <cctype>
#include <filesystem>

namespace platform {

namespace fs = std::filesystem;

namespace {

/// Bundle identifier of the application that a process runs, as its executable's path and Info.plist show it.
std::string identifierOfProcess(const fs::path &procEntry)
{
    std::error_code error;
    const std::string executable = fs::read_symlink(procEntry / "exe", error).string();
    const std::size_t contents = executable.rfind(".app/Contents/MacOS/");
    if (contents == std::string::npos)
        return {};
    return bundleInfo(executable.substr(0, contents) + ".app", "CFBundleIdentifier");
}

bool isProcessEntry(const fs::path &procEntry)
{
    const std::string name = procEntry.filename().string();
    return std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c); });
}

} // namespace

bool isApplicationRunning(const std::string &bundleId)
{
    if (bundleId.empty())
        return false;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
        if (isProcessEntry(entry->path()) && identifierOfProcess(entry->path()) == bundleId)
            return true;
    }
    return false;
}

bool openUrl(const std::string &url)
{
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

} // namespace platform
