#include "config/MacConfigPath_p.h"

#include "config/GlobalConfigFile.h"
#include "config/MacGlobalConfig.h"
#include "paths/BundlePath_p.h"
#include "paths/GroupContainer_p.h"
#include "paths/MacPath.h"
#include "paths/platform/Bundle_p.h"
#include "runtime/CommonFileLog.h"

#include <filesystem>
#include <identity.h>
#include <mutex>
#include <optional>
#include <string_view>

namespace fs = std::filesystem;

namespace {

constexpr int kMaxReplacements = 64;

std::string withForwardSlashes(std::string name)
{
    MacConfigPath::ReplaceAll(name, "\\", "/");
    return name;
}

std::string logged(std::string_view caller, std::string path)
{
    constexpr std::string_view arrow = " -> ";
    std::string line;
    line.reserve(caller.size() + arrow.size() + path.size());
    CommonFileLog::WriteLog(line.append(caller).append(arrow).append(path));
    return path;
}

} // namespace

std::string executablePath(std::error_code &error)
{
    static auto &mutex = *new std::mutex; // both outlive whatever asks at exit
    static auto &known = *new std::string;

    error.clear();
    const std::lock_guard<std::mutex> lock(mutex);
    if (known.empty()) {
        if (const std::optional<std::string> reported = platform::executablePath())
            known = fs::canonical(*reported, error).string();
    }
    return known;
}

const MacConfigPath *configPathOrNull()
{
    try {
        return MacConfigPath::GetInstance();
    } catch (const fs::filesystem_error &) {
        return nullptr;
    }
}

MacConfigPath *MacConfigPath::GetInstance()
{
    static MacConfigPath &g_instance = *new MacConfigPath; // asked by static destructors, too
    return &g_instance;
}

MacConfigPath::MacConfigPath()
{
    InitCurrentExePathName();
    InitMainAppRootDir();
    InitUserDataDir();
}

MacConfigPath::~MacConfigPath() = default;

// clang-format off
std::string MacConfigPath::GetExeDir() const { return m_exeDir; }
std::string MacConfigPath::GetExeName() const { return m_exeName; }
std::string MacConfigPath::GetMainAppRootDir() const { return m_mainAppRootDir; }
std::string MacConfigPath::GetMainAppName() const { return m_mainAppName; }
std::string MacConfigPath::GetUserDataDir() const { return m_userDataDir; }
// clang-format on

std::string MacConfigPath::GetAppConfigDir() const
{
    return m_mainAppRootDir.empty() ? std::string() : m_mainAppRootDir + "Contents/Resources/";
}

std::string MacConfigPath::GetAppConfigPath(const std::string &relative) const
{
    const std::string directory = GetAppConfigDir();
    return logged("MacConfigPath::GetAppConfigPath",
                  directory.empty() ? std::string() : directory + withForwardSlashes(relative));
}

std::string MacConfigPath::GetExeFullPath(const std::string &relative) const
{
    const std::string directory = m_mainAppRootDir.empty() ? std::string() : m_mainAppRootDir + "Contents/";
    return logged("MacConfigPath::GetExeFullPath", directory + withForwardSlashes(relative));
}

std::string MacConfigPath::GetUserDataPath(const std::string &relative) const
{
    return logged("MacConfigPath::GetUserDataPath", m_userDataDir + withForwardSlashes(relative));
}

std::string MacConfigPath::GetLogPath() const
{
    constexpr char suffix[] = ".log";
    const std::string name = m_exeName.empty() ? product::kDefaultLogName.str() : m_exeName;
    std::string path;
    path.reserve(m_userDataDir.size() + name.size() + sizeof suffix);
    return path.append(m_userDataDir).append(name).append(suffix);
}

bool MacConfigPath::IsAppDataFileExist(const std::string &relative) const
{
    if (m_userDataDir.empty() || relative.empty())
        return false;
    const std::string path = m_userDataDir + relative;
    const bool exists = isPathExist(path);
    CommonFileLog::WriteLog(std::string("IsAppDataFileExist return ") + (exists ? "1" : "0") + ", path -> " + path);
    return exists;
}

std::string MacConfigPath::GetCurrentExePath()
{
    std::error_code error;
    std::string path = executablePath(error);
    if (error)
        throw fs::filesystem_error("no canonical path of the executable", error);
    return path;
}

int MacConfigPath::ReplaceAll(std::string &text, const std::string &from, const std::string &to)
{
    if (from.empty()) {
        text.insert(0, to);
        return 1;
    }
    int count = 0;
    std::size_t at = text.find(from);
    while (at != std::string::npos && count < kMaxReplacements) {
        text.replace(at, from.size(), to);
        ++count;
        at = text.find(from, at + to.size());
    }
    return count;
}

void MacConfigPath::InitCurrentExePathName()
{
    if (!m_exeDir.empty() && !m_exeName.empty())
        return;
    const fs::path executable = GetCurrentExePath();
    m_exeDir = withTrailingSlash(executable.parent_path().string());
    m_exeName = executable.filename().string();
}

void MacConfigPath::InitMainAppRootDir()
{
    if (!m_mainAppRootDir.empty() && !m_mainAppName.empty())
        return;
    const std::optional<std::string> prefix = prefixOfMainBundle(m_exeDir);
    if (!prefix)
        return;

    const std::size_t slash = prefix->rfind('/');
    if (slash != std::string::npos)
        m_mainAppName = prefix->substr(slash + 1);
    if (m_mainAppName.empty())
        m_mainAppName = product::kDefaultAppName.str();
    m_mainAppRootDir = *prefix + ".app/";
}

void MacConfigPath::InitUserDataDir()
{
    if (MacGlobalConfig::IsEnableSandBox()) {
        m_userDataDir = groupContainer(MacGlobalConfig::GetShareGroupName()) + "/";
        return;
    }
    std::string directory = withTrailingSlash(MacPath::getUserDirPath());
    if (directory.empty())
        directory = "~/Library/Application Support/"; // literally: the tilde is not expanded
    m_userDataDir = directory + m_mainAppName + "/";
}
