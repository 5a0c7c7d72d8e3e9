#include "tools/inspect/Doctor.h"

#include "config/GlobalConfigFile.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "paths/MacBookmark.h"
#include "paths/MacSandbox.h"
#include "paths/MacUtils.h"
#include "paths/PathUtils.h"
#include "paths/RegularFile_p.h"
#include "paths/StringUtils.h"
#include "tools/inspect/Account.h"
#include "tools/inspect/FileChecks.h"

#include <INIReader.h>
#include <QDir>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <sstream>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace inspect {

namespace {

constexpr char kSection[] = "common";

bool isFull(const fs::path &path)
{
    std::error_code error;
    const fs::space_info space = fs::space(path, error);
    return !error && space.capacity != 0 && space.available == 0;
}

std::string trimmed(const std::string &text)
{
    const std::size_t begin = text.find_first_not_of(" \t\r");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin);
}

bool isSameName(const std::string &a, const std::string &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

/// The lines that begin with `key` in the section of the switches.
std::vector<int> linesOf(const std::string &path, const std::string &key)
{
    std::istringstream file(readRegularFile(path, kMaxGlobalFileSize).bytes.toStdString());
    std::vector<int> found;
    std::string section;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        line = trimmed(line);
        if (!line.empty() && line.front() == '[')
            section = line.substr(1, line.find(']') - 1);
        else if (isSameName(section, kSection) && isSameName(trimmed(line.substr(0, line.find_first_of("=:"))), key))
            found.push_back(number);
    }
    return found;
}

int lineOf(const std::string &path, const std::string &key)
{
    const std::vector<int> lines = linesOf(path, key);
    return lines.empty() ? 0 : lines.front();
}

/// A key whose text has several lines was set more than once, or took in the indented lines below it.
void checkSingle(const INIReader &file, const std::string &path, const std::string &key, Findings &findings)
{
    if (file.Get(kSection, key, "").find('\n') == std::string::npos)
        return;
    const std::vector<int> lines = linesOf(path, key);
    if (lines.size() > 1)
        findings.problem(path, key + " is set more than once, and the first value counts", lines.back());
    else
        findings.problem(path, key + " takes in the indented lines below it", lineOf(path, key));
}

void checkSwitch(const INIReader &file, const std::string &path, const std::string &key, Findings &findings)
{
    checkSingle(file, path, key, findings);
    const std::string text = file.Get(kSection, key, "");
    const std::string first = trimmed(text.substr(0, text.find('\n')));
    if (first.empty() || first == "0" || first == "1")
        return;
    const char *effect = file.GetInteger(kSection, key, 0) == 1 ? "on" : "off";
    findings.problem(path, key + " is neither 0 nor 1 and counts as " + effect, lineOf(path, key));
}

void checkGlobalFile(Findings &findings)
{
    const std::string path = GetDatPath();
    const auto [state, content] = readRegularFile(path, kMaxGlobalFileSize);
    if (state == FileContent::State::missing)
        return findings.problem(path, "missing: every switch is off");
    if (state == FileContent::State::irregular)
        return findings.problem(path, "no regular file: every switch is off");
    if (state == FileContent::State::tooLarge)
        return findings.problem(path, "too large to be read: every switch is off");
    if (state == FileContent::State::unreadable)
        return findings.problem(path, "cannot be read: every switch is off");
    if (content.contains('\0'))
        return findings.problem(path, "binary, no text: every switch is off");

    const INIReader file(content.constData(), static_cast<std::size_t>(content.size()));
    if (file.ParseError() > 0)
        return findings.problem(path, "malformed line: every switch is off", file.ParseError());
    if (!file.HasSection(kSection))
        return findings.problem(path, std::string("no section [") + kSection + "]: every switch is off");
    for (const char *key : {"enable_log", "enable_sbx", "app_store", "app_international"})
        checkSwitch(file, path, key, findings);
    checkSingle(file, path, "group_name", findings);
}

void checkBundle(Findings &findings)
{
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    const std::string plist = MacUtils::GetMainAppPListFullPath();
    if (paths->GetMainAppRootDir().empty())
        return findings.problem(paths->GetExeDir(), "no bundle: the executable lies outside an .app folder");
    const fs::file_type type = typeOf(plist);
    if (type != fs::file_type::regular) {
        const std::string state = type == fs::file_type::not_found ? "missing" : "no regular file";
        return findings.problem(plist, state + ": name, identifier and version are empty");
    }

    const std::string version = MacUtils::GetMainBundleVersionString();
    std::vector<int> fields;
    if (version.empty())
        findings.problem(plist, "unreadable, malformed, or without CFBundleShortVersionString: the version is empty");
    else if (!VersionToIntVec(version, fields))
        findings.problem(plist, "version \"" + version + "\" is not three decimal fields and reads as 0");
    if (!version.empty() && (MacUtils::GetAppName().empty() || MacUtils::GetOrgName().empty()))
        findings.problem(plist, "CFBundleName or CFBundleIdentifier is missing");
}

void checkAccountHelper(Findings &findings)
{
    const std::string path = accountHelperPath();
    if (typeOf(path) != fs::file_type::regular || ::access(path.c_str(), X_OK) != 0)
        findings.problem(path, "missing or not executable: account pages cannot be opened");
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

void checkBookmarks(Findings &findings)
{
    for (const MacBookmark::Entry &entry : MacBookmark::entries()) {
        if (entry.state == MacBookmark::State::stale)
            findings.problem(entry.path, "its bookmark is stale: the folder or file was replaced");
        else if (entry.state == MacBookmark::State::unresolvable)
            findings.problem(entry.path, "its bookmark does not resolve");
    }
}

void checkContainer(Findings &findings)
{
    if (MacSandbox::isSandBox())
        return; // it is the user data folder then
    const std::string path = MacSandbox::getSharedPath("");
    const fs::file_type type = typeOf(path);
    if (type != fs::file_type::not_found && type != fs::file_type::directory)
        findings.problem(path, "the container of the application group is no folder");
    else if (type == fs::file_type::directory && !isWritable(path))
        findings.problem(path, "the container of the application group is not writable");
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

void Findings::note(const std::string &file, const std::string &what)
{
    m_notes.push_back(finding(file, what, 0));
}

Json examination()
{
    Findings findings;
    for (const auto check : {checkBundle, checkAccountHelper, checkGlobalFile, checkBundledFiles, checkUserData,
                             checkStores, checkLog, checkTemporaryFolder, checkBookmarks, checkContainer})
        check(findings);
    return {{"problems", findings.problems()}, {"notes", findings.notes()}};
}

bool hasProblems(const Json &examination)
{
    return !examination.at("problems").empty();
}

} // namespace inspect
