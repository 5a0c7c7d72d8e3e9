#include "tools/inspect/Doctor.h"

#include "config/GlobalConfigFile.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "paths/MacUtils.h"
#include "paths/PathUtils.h"
#include "paths/StringUtils.h"

#include <INIReader.h>
#include <QDir>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace inspect {

namespace {

constexpr char kSection[] = "common";

fs::file_type typeOf(const std::string &path)
{
    std::error_code error;
    return fs::status(path, error).type();
}

bool isWritable(const fs::path &path)
{
    return ::access(path.c_str(), W_OK) == 0;
}

bool isFull(const fs::path &path)
{
    std::error_code error;
    const fs::space_info space = fs::space(path, error);
    return !error && space.available == 0;
}

/// The last line of an INI file that sets `key`, or 0.
int lineOf(const std::string &path, std::string_view key)
{
    const auto startsWithKey = [key](const std::string &line) {
        const std::size_t begin = std::min(line.find_first_not_of(" \t\xEF\xBB\xBF"), line.size());
        const std::size_t end = line.find_first_of(" \t=:", begin);
        return std::equal(key.begin(), key.end(), line.begin() + static_cast<std::ptrdiff_t>(begin),
                          line.begin() + static_cast<std::ptrdiff_t>(std::min(end, line.size())),
                          [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
    };
    std::ifstream file(path);
    int number = 0;
    int found = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (startsWithKey(line))
            found = number;
    }
    return found;
}

void checkSwitch(const INIReader &file, const std::string &path, const char *key, Findings &findings)
{
    const std::string text = file.Get(kSection, key, "");
    if (text.find('\n') != std::string::npos)
        findings.problem(path, std::string(key) + " is set more than once", lineOf(path, key));
    const long value = file.GetInteger(kSection, key, 0);
    const bool isNumber = value == file.GetInteger(kSection, key, 1);
    if (!text.empty() && (!isNumber || (value != 0 && value != 1)))
        findings.problem(path, std::string(key) + " is neither 0 nor 1 and counts as off", lineOf(path, key));
}

void checkGlobalFile(Findings &findings)
{
    const std::string path = GetDatPath();
    const fs::file_type type = typeOf(path);
    if (!isPathExist(path))
        return findings.problem(path, "missing: every switch is off");
    if (type != fs::file_type::regular)
        return findings.problem(path, "no regular file: every switch is off");

    const INIReader file(path);
    if (file.ParseError() < 0)
        return findings.problem(path, "cannot be read: every switch is off");
    if (file.ParseError() > 0)
        return findings.problem(path, "malformed line: every switch is off", file.ParseError());
    for (const char *key : {"enable_log", "enable_sbx", "app_store", "app_international"})
        checkSwitch(file, path, key, findings);
    if (file.Get(kSection, "group_name", "").find('\n') != std::string::npos)
        findings.problem(path, "group_name is set more than once", lineOf(path, "group_name"));
}

void checkBundle(Findings &findings)
{
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    const std::string plist = MacUtils::GetMainAppPListFullPath();
    if (paths->GetMainAppRootDir().empty())
        return findings.problem(paths->GetExeDir(), "no bundle: the executable lies outside an .app folder");
    if (typeOf(plist) != fs::file_type::regular)
        return findings.problem(plist, "missing: name, identifier and version are empty");

    const std::string version = MacUtils::GetMainBundleVersionString();
    std::vector<int> fields;
    if (version.empty())
        findings.problem(plist, "malformed, or holds no CFBundleShortVersionString: the version is empty");
    else if (!VersionToIntVec(version, fields))
        findings.problem(plist, "version \"" + version + "\" is not three decimal fields and reads as 0");
    else if (MacUtils::GetAppName().empty() || MacUtils::GetOrgName().empty())
        findings.problem(plist, "CFBundleName or CFBundleIdentifier is missing");
}

void checkMissingUserData(const fs::path &directory, Findings &findings)
{
    fs::path existing = directory;
    while (existing.has_relative_path() && !isPathExist(existing.string()))
        existing = existing.parent_path();
    if (!fs::is_directory(existing) || !isWritable(existing))
        findings.problem(directory.string(), "does not exist and cannot be made in " + existing.string());
    else if (MacGlobalConfig::IsEnableFileLog())
        findings.problem(directory.string(), "does not exist: log lines are lost");
    else
        findings.note(directory.string(), "does not exist yet");
}

void checkUserData(Findings &findings)
{
    const std::string directory = MacConfigPath::GetInstance()->GetUserDataDir();
    if (!isPathExist(directory))
        checkMissingUserData(directory, findings);
    else if (typeOf(directory) != fs::file_type::directory)
        findings.problem(directory, "no folder: user data cannot be stored");
    else if (!isWritable(directory))
        findings.problem(directory, "not writable: user data cannot be stored");
    else if (isFull(directory))
        findings.problem(directory, "no space left on its disk");
}

void checkLog(Findings &findings)
{
    const std::string path = MacConfigPath::GetInstance()->GetLogPath();
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::none)
        return findings.problem(path, "cannot be looked at (" + error.message() + "): log lines are lost");
    if (type == fs::file_type::not_found)
        return;
    if (type == fs::file_type::fifo)
        findings.problem(path, "a FIFO: log lines are lost while nobody reads it");
    else if (type != fs::file_type::regular)
        findings.problem(path, "no regular file: log lines are lost");
    else if (!isWritable(path))
        findings.problem(path, "read-only: log lines are lost");
    else if (isFull(path))
        findings.problem(path, "no space left on its disk: log lines are lost");
    else if (!MacGlobalConfig::IsEnableFileLog())
        findings.note(path, "the log is on because this file exists");
}

void checkTemporaryFolder(Findings &findings)
{
    if (PathUtils::getTempDir().isEmpty())
        findings.problem(QDir::tempPath().toStdString(),
                         "no folder for temporary files: edited pictures get no backup");
}

Json finding(const std::string &file, const std::string &what, int line)
{
    return file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + what;
}

} // namespace

void Findings::problem(const std::string &file, const std::string &what, int line)
{
    m_problems.push_back(finding(file, what, line));
}

void Findings::note(const std::string &file, const std::string &what, int line)
{
    m_notes.push_back(finding(file, what, line));
}

Json examination()
{
    Findings findings;
    for (const auto check : {checkBundle, checkGlobalFile, checkUserData, checkLog, checkTemporaryFolder})
        check(findings);
    return {{"problems", findings.problems()}, {"notes", findings.notes()}};
}

bool hasProblems(const Json &examination)
{
    return !examination.at("problems").empty();
}

} // namespace inspect
