#include "paths/platform/Workspace_p.h"

#include "paths/platform/Bundle_p.h"

#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QUrl>
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

namespace platform {

namespace fs = std::filesystem;

namespace {

bool isProcessEntry(const fs::path &procEntry)
{
    const std::string name = procEntry.filename().string();
    return std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c); });
}

/// The first process whose executable's path `matches`; 0 when there is none. A process that has ended shows none.
int findProcess(const std::function<bool(const fs::path &executable)> &matches)
{
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
        if (!isProcessEntry(entry->path()))
            continue;
        std::error_code unreadable;
        if (const fs::path executable = fs::read_symlink(entry->path() / "exe", unreadable);
            !executable.empty() && matches(executable))
            return std::stoi(entry->path().filename().string());
    }
    return 0;
}

/// Bundle identifier of the application that an executable belongs to, as its path and Info.plist show it.
std::string identifierOf(const std::string &executable)
{
    const std::size_t contents = executable.rfind(".app/Contents/MacOS/");
    if (contents == std::string::npos)
        return {};
    return bundleInfo(executable.substr(0, contents) + ".app", "CFBundleIdentifier");
}

fs::path onlyFileIn(const fs::path &folder)
{
    fs::path found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unreadable;
        if (!entry->is_regular_file(unreadable))
            continue;
        if (!found.empty())
            return {};
        found = entry->path();
    }
    return found;
}

/// The executable of a bundle; empty when it has none.
fs::path executableOfBundle(const fs::path &bundle)
{
    const fs::path folder = bundle / "Contents/MacOS";
    for (const std::string &name : {bundleInfo(bundle.string(), "CFBundleExecutable"), bundle.stem().string()}) {
        std::error_code error;
        // A name, and no path that leads out of the bundle.
        if (!name.empty() && name.find('/') == std::string::npos && fs::is_regular_file(folder / name, error))
            return folder / name;
    }
    return onlyFileIn(folder);
}

LaunchOutcome failed(const std::string &reason)
{
    return {false, reason, 0};
}

QString toQString(const std::string &bytes)
{
    return QFile::decodeName(bytes.c_str());
}

LaunchOutcome startDetached(const fs::path &executable, const std::vector<std::string> &arguments)
{
    QStringList list;
    for (const std::string &argument : arguments)
        list << toQString(argument);

    QProcess process;
    process.setProgram(toQString(executable.string()));
    process.setArguments(list);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    qint64 processId = 0;
    if (!process.startDetached(&processId))
        return failed("cannot start " + executable.string());
    return {true, executable.string(), static_cast<int>(processId)};
}

LaunchOutcome launchApplication(const std::string &applicationPath, const std::vector<std::string> &arguments,
                                bool newInstance)
{
    // Absolute, because a bare name would be looked for in PATH.
    std::error_code error;
    fs::path application = fs::absolute(applicationPath, error);
    if (!application.has_filename())
        application = application.parent_path();
    if (!fs::is_directory(application, error))
        return startDetached(application, arguments);

    const fs::path executable = executableOfBundle(application);
    if (executable.empty())
        return failed("no executable in " + application.string());
    const fs::path canonical = fs::canonical(executable, error);
    const int running = newInstance ? 0 : findProcess([&canonical](const fs::path &path) { return path == canonical; });
    return running != 0 ? LaunchOutcome{true, executable.string(), running} : startDetached(executable, arguments);
}

/// Whether a text has a scheme. What has none might begin with "-" and be taken for an option.
bool isAddress(const std::string &url)
{
    const QUrl address(QString::fromStdString(url), QUrl::StrictMode);
    return address.isValid() && !address.isRelative();
}

// URLs stay out of the descriptions, which are logged: account pages carry the user's certificate.
LaunchOutcome outcomeOf(const LaunchRequest &request)
{
    if (request.url.empty())
        return launchApplication(request.applicationPath, request.arguments, request.createsNewInstance);
    if (!isAddress(request.url))
        return failed("the URL has no scheme");
    // Always a new process: one that runs has no way to be told.
    if (!request.applicationPath.empty())
        return launchApplication(request.applicationPath, {request.url}, true);
    return openUrl(request.url) ? LaunchOutcome{true, "the default application", 0}
                                : failed("no application opens the URL");
}

/// Runs `action` here and hands what it gives to `handler` on a thread of its own. False, with nothing done, when no
/// thread can be had.
bool deliverOutcome(const std::function<LaunchOutcome()> &action, const LaunchHandler &handler)
{
    std::promise<LaunchOutcome> outcome;
    try {
        std::thread([handler, result = outcome.get_future()]() mutable { handler(result.get()); }).detach();
    } catch (const std::system_error &) {
        return false;
    }
    outcome.set_value(action());
    return true;
}

} // namespace

bool isApplicationRunning(const std::string &bundleId)
{
    const auto matches = [&bundleId](const fs::path &executable) { return identifierOf(executable) == bundleId; };
    return !bundleId.empty() && findProcess(matches) != 0;
}

bool isProcessRunning(int processId)
{
    // kill() takes these for groups of processes.
    if (processId <= 0)
        return false;
    std::ifstream status("/proc/" + std::to_string(processId) + "/status");
    if (!status)
        return ::kill(processId, 0) == 0 || errno == EPERM;

    const std::string self = "Tgid:\t" + std::to_string(processId);
    bool isThread = true; // of another process: /proc answers for threads too
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("State:\tZ", 0) == 0 || line.rfind("State:\tX", 0) == 0)
            return false;
        if (line == self)
            isThread = false;
    }
    return !isThread;
}

bool openUrl(const std::string &url)
{
    return isAddress(url) && QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

bool launch(const LaunchRequest &request, const LaunchHandler &handler)
{
    return deliverOutcome([&request] { return outcomeOf(request); }, handler);
}

} // namespace platform
