#include "paths/MacSandbox.h"

#include "config/GlobalConfigFile.h"
#include "config/MacGlobalConfig.h"
#include "paths/GroupContainer_p.h"
#include "paths/MacBookmark.h"
#include "paths/platform/OpenPanel_p.h"
#include "paths/platform/SystemLog_p.h"
#include "paths/platform/Workspace_p.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr char kGrantAccess[] = "授予访问权限";
constexpr int kLookEveryMs = 200;
/// What may stand in the query of a URL beside letters, digits and "-._~" (RFC 3986).
constexpr char kQueryAllowed[] = "!$&'()*+,;=:@/?";

const char *subFolderOf(SharedPath::Type type)
{
    switch (type) {
    case SharedPath::Temp:
        return "/temp";
    case SharedPath::Data:
        return "/data";
    case SharedPath::Config:
        return "/config";
    }
    return "";
}

std::string normalised(const std::string &folder)
{
    std::string path = fs::path(folder).lexically_normal().string();
    if (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

/// Nothing for a text that is no UTF-8.
std::optional<std::string> percentEncoded(const std::string &url)
{
    // The letter in front keeps a U+FEFF from being taken for a byte-order mark, and dropped.
    const QByteArray bytes = 'x' + QByteArray::fromStdString(url);
    if (QString::fromUtf8(bytes).toUtf8() != bytes)
        return std::nullopt;
    return bytes.mid(1).toPercentEncoding(kQueryAllowed).toStdString();
}

platform::LaunchHandler reportingTo(std::function<void(int)> completion, const std::string &logName)
{
    return [completion = std::move(completion), logName](const platform::LaunchOutcome &outcome) {
        platform::systemLog(logName + (outcome.launched ? " successfully: " : ": ") + outcome.description);
        completion(outcome.launched ? outcome.processId : -1);
    };
}

} // namespace

bool MacSandbox::isSandBox()
{
    static const bool on = MacGlobalConfig::IsEnableSandBox();
    return on;
}

std::string MacSandbox::appGroupId()
{
    return MacGlobalConfig::GetShareGroupName();
}

std::string MacSandbox::appGroupIdPath()
{
    return appGroupId() + "/";
}

std::string MacSandbox::getHomePath()
{
    return homePath();
}

std::string MacSandbox::getSharedPath(const std::string &groupId)
{
    return groupContainer(groupId.empty() ? appGroupId() : groupId);
}

std::string MacSandbox::getSharedPath(SharedPath::Type type, const std::string &groupId)
{
    std::string path = getSharedPath(groupId) + subFolderOf(type);
    std::error_code error;
    if (fs::status(path, error).type() == fs::file_type::not_found)
        fs::create_directories(path, error);
    return path;
}

bool MacSandbox::requestPermission(const std::string &dirPath, const std::string &prompt)
{
    if (dirPath.empty())
        return false;
    const std::string folder = normalised(dirPath);
    std::vector<std::string> chosen;
    return openNSFilePanel(folder, true, prompt.empty() ? kGrantAccess : prompt, chosen) && chosen.front() == folder;
}

bool MacSandbox::openNSFilePanel(const std::string &dirPath, bool directoriesOnly, const std::string &prompt,
                                 std::vector<std::string> &selectedPaths)
{
    const auto chosen = platform::runOpenPanel({dirPath, directoriesOnly, prompt});
    if (!chosen || chosen->empty())
        return false;
    selectedPaths.insert(selectedPaths.end(), chosen->begin(), chosen->end());
    MacBookmark::createBookmark(chosen->front());
    return true;
}

bool MacSandbox::openURL(const LaunchParams &params, std::function<void(int)> completion)
{
    if (params.url.empty())
        return false;
    const std::optional<std::string> url = percentEncoded(params.url);
    if (!url)
        return false;

    platform::LaunchRequest request;
    request.url = *url;
    request.applicationPath = params.appPath;
    request.hides = !params.activate;
    request.activates = params.activate;
    request.createsNewInstance = params.newInstance;
    return (params.appPath.empty() || isPathExist(params.appPath))
        && platform::launch(request, reportingTo(std::move(completion), "OpenURLWithNSWorkspace"));
}

bool MacSandbox::openApp(const LaunchParams &params, std::function<void(int)> completion)
{
    platform::LaunchRequest request;
    request.applicationPath = params.appPath;
    request.arguments = params.arguments;
    request.createsNewInstance = params.newInstance;
    return isPathExist(params.appPath)
        && platform::launch(request, reportingTo(std::move(completion), "RunWithNSWorkspace"));
}

bool MacSandbox::isRunning(int pid)
{
    return platform::isProcessRunning(pid);
}

int MacSandbox::waitProcFinish(int pid, int timeoutMs)
{
    int remaining = timeoutMs;
    while (isRunning(pid)) {
        if (timeoutMs >= 1) {
            if (remaining < 0)
                return -1;
            // Exactly 0 stays 0, so that multiples of the interval never expire: kept, callers pass them to wait on.
            if (remaining != 0)
                remaining -= kLookEveryMs;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(kLookEveryMs));
    }
    return 0;
}
