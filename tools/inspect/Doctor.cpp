#include "tools/inspect/Doctor.h"

#include "config/GlobalConfigFile.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "config/MacGlobalSetting.h"
#include "paths/MacBookmark.h"
#include "paths/MacSandbox.h"
#include "paths/MacUtils.h"
#include "paths/PathUtils.h"
#include "paths/StringUtils.h"
#include "runtime/MacGlobalUrl.h"
#include "tools/inspect/Account.h"
#include "tools/inspect/Checks.h"

#include <QDir>
#include <algorithm>
#include <dlfcn.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace inspect {

namespace {

constexpr char kReinstall[] = "Install the product again.";
constexpr char kLinesLost[] = "Lines of the diagnostic log are lost.";

bool isInBundle()
{
    return !MacConfigPath::GetInstance()->GetMainAppRootDir().empty();
}

bool isFull(const fs::path &path)
{
    std::error_code error;
    const fs::space_info space = fs::space(path, error);
    return !error && space.capacity != 0 && space.available == 0;
}

void checkBundle(Checklist &list)
{
    list.begin("bundle", "Application bundle");
    if (!isInBundle())
        return list.problem({"the executable lies outside an .app folder",
                             "Every place of the application is empty, and every setting the default.",
                             "Start the program from within the application's bundle.",
                             MacConfigPath::GetInstance()->GetExeDir()});
    const std::string plist = MacUtils::GetMainAppPListFullPath();
    const fs::file_type type = typeOf(plist);
    const char *effect = "The application's name, identifier and version are empty.";
    if (type != fs::file_type::regular)
        return list.problem(
            {type == fs::file_type::not_found ? "missing" : "no regular file", effect, kReinstall, plist});
    const std::string version = MacUtils::GetMainBundleVersionString();
    std::vector<int> fields;
    if (version.empty())
        list.problem({"unreadable, malformed, or without CFBundleShortVersionString", "The version is empty.",
                      kReinstall, plist});
    else if (!VersionToIntVec(version, fields))
        list.problem({"the version \"" + version + "\" is not three decimal fields", "The version reads as 0.",
                      "Set CFBundleShortVersionString to three numbers, as in 1.2.3.", plist});
    if (!version.empty() && (MacUtils::GetAppName().empty() || MacUtils::GetOrgName().empty()))
        list.problem({"CFBundleName or CFBundleIdentifier is missing", effect, kReinstall, plist});
}

/// The name by which the file was loaded that a function of the library is in.
fs::path fileOf(const void *function)
{
    Dl_info info{};
    return ::dladdr(function, &info) == 0 ? fs::path() : fs::path(info.dli_fname);
}

void checkLibraries(Checklist &list)
{
    list.begin("libraries", "Libraries");
    const std::string root = MacConfigPath::GetInstance()->GetMainAppRootDir();
    const fs::path loaded = fileOf(reinterpret_cast<const void *>(&isPathExist));
    // An installed bundle has links to the libraries that everybody uses.
    std::error_code error;
    const fs::path own = fs::path(root) / "Contents" / "Frameworks" / loaded.filename();
    const std::string file = fs::canonical(loaded, error).string();
    if (!root.empty() && !file.empty() && fs::canonical(own, error) != file)
        list.problem({"the library comes from outside the bundle", "It may be of another version than the product.",
                      "Unset LD_LIBRARY_PATH or DYLD_LIBRARY_PATH, or install the product again.", file});
    const std::string name = fs::path(file).filename().string();
    const bool tellsVersion = std::count(name.begin(), name.end(), '.') > 2;
    if (tellsVersion && name.find(OND_VERSION) == std::string::npos)
        list.problem({"the library is of another version than this program, which is " OND_VERSION,
                      "Answers may be wrong, and programs may crash.", kReinstall, file});
}

void checkAccountHelper(Checklist &list)
{
    list.begin("account-helper", "Account helper");
    const std::string path = accountHelperPath();
    if (typeOf(path) != fs::file_type::regular || ::access(path.c_str(), X_OK) != 0)
        list.problem({"missing or not executable", "The login and the account's pages cannot be opened.",
                      "Install the product again, or make the file executable.", path});
}

void checkMissingUserData(const fs::path &directory, Checklist &list)
{
    fs::path existing = directory;
    while (existing.has_relative_path() && !isPathExist(existing.string()))
        existing = existing.parent_path();
    if (!fs::is_directory(existing) || !isWritable(existing))
        list.problem({"does not exist, and cannot be made in " + existing.string(), "Nothing is kept for the user.",
                      fs::is_directory(existing) ? "Give the user permission to write to that folder."
                                                 : "Move away what lies there: it is no folder.",
                      directory.string()});
    else if (MacGlobalConfig::IsEnableFileLog())
        list.problem({"does not exist", kLinesLost, "Start the product once, or make the folder.", directory.string()});
    else
        list.note({"does not exist yet", "None: the product makes it when it has something to keep.", "Nothing to do.",
                   directory.string()});
}

void checkUserData(Checklist &list)
{
    list.begin("user-data", "User data");
    std::string directory = MacConfigPath::GetInstance()->GetUserDataDir();
    while (directory.size() > 1 && directory.back() == '/')
        directory.pop_back(); // behind which a file would not be found
    const char *effect = "Nothing is kept for the user.";
    if (typeOf(directory) == fs::file_type::not_found)
        checkMissingUserData(directory, list);
    else if (typeOf(directory) != fs::file_type::directory)
        list.problem({"something that is no folder lies here", effect, "Move it away.", directory});
    else if (!isWritable(directory))
        list.problem({"not writable", effect, "Give the user permission to write to it.", directory});
    else if (isFull(directory))
        list.problem({"no space left on its disk", effect, "Make room on the disk.", directory});
}

void checkLog(Checklist &list)
{
    list.begin("log", "Diagnostic log");
    const std::string path = MacConfigPath::GetInstance()->GetLogPath();
    const char *moveAway = "Move it away.";
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::none)
        return list.problem({"cannot be looked at (" + error.message() + ")", kLinesLost, moveAway, path});
    if (type == fs::file_type::not_found)
        return;
    if (type == fs::file_type::fifo)
        list.problem({"a FIFO", "Lines are lost while nobody reads it.", moveAway, path});
    else if (type != fs::file_type::regular)
        list.problem({"no regular file", kLinesLost, moveAway, path});
    else if (!isWritable(path))
        list.problem({"read-only", kLinesLost, "Give the user permission to write to it.", path});
    else if (isFull(path))
        list.problem({"no space left on its disk", kLinesLost, "Make room on the disk.", path});
    else if (!MacGlobalConfig::IsEnableFileLog())
        list.note({"the log is on because this file exists", "The file grows without bound.",
                   "Remove it when the log is not needed any more.", path});
}

void checkTemporaryFolder(Checklist &list)
{
    list.begin("temporary-folder", "Temporary files");
    if (PathUtils::getTempDir().isEmpty())
        list.problem({"there is no folder for temporary files", "Edited pictures get no backup.",
                      "Make the folder, or set TMPDIR to one that can be written to.", QDir::tempPath().toStdString()});
}

void checkBookmarks(Checklist &list)
{
    list.begin("bookmarks", "Remembered permissions");
    const char *effect = "The product asks for permission again when it needs it.";
    for (const MacBookmark::Entry &entry : MacBookmark::entries()) {
        const std::string renew = "Open the file or folder once in the product, and allow the access.";
        if (entry.state == MacBookmark::State::stale)
            list.problem({"its bookmark is stale: the folder or file was replaced", effect, renew, entry.path});
        else if (entry.state == MacBookmark::State::unresolvable)
            list.problem({"its bookmark does not resolve", effect, renew, entry.path});
    }
}

void checkContainer(Checklist &list)
{
    list.begin("container", "Container of the application group");
    if (MacSandbox::isSandBox())
        return; // it is the user data folder then
    const std::string path = MacSandbox::getSharedPath("");
    const fs::file_type type = typeOf(path);
    const char *effect = "The product's programs do not share files.";
    if (type != fs::file_type::not_found && type != fs::file_type::directory)
        list.problem({"no folder", effect, "Move it away.", path});
    else if (type == fs::file_type::directory && !isWritable(path))
        list.problem(
            {"not writable", effect,
             "Give the user permission to write to it; on macOS, sign the product with the group's entitlement.",
             path});
}

void checkMarkers(Checklist &list)
{
    list.begin("markers", "Markers for testing");
    const std::string folder = MacConfigPath::GetInstance()->GetUserDataDir();
    bool usesTestServer = false;
    static_cast<void>(MacGlobalUrl::GetDefSvrHost(&usesTestServer));
    if (usesTestServer)
        list.note({"the marker for the test servers lies here", "Services are asked on the test servers.",
                   "Remove it unless this machine is for testing.", folder});
    if (MacGlobalSetting::IsEnableDebug())
        list.note({"the marker for debugging lies here", "The product shows what is meant for its developers.",
                   "Remove it unless this machine is for testing.", folder});
}

} // namespace

void Checklist::begin(const char *id, const char *name)
{
    m_rows.push_back({{"id", id}, {"name", name}, {"state", "ok"}});
}

void Checklist::add(const char *state, const Finding &finding)
{
    Json row = m_rows.back();
    if (row.at("state") == "ok")
        m_rows.erase(m_rows.size() - 1);
    row["state"] = state;
    row["text"] = finding.text;
    row["effect"] = finding.effect;
    row["remedy"] = finding.remedy;
    row["path"] = finding.path;
    row["line"] = finding.line;
    m_rows.push_back(row);
}

Json Checklist::json() const
{
    return {{"schema", 1}, {"checks", m_rows}};
}

Json examination()
{
    Checklist list;
    for (const auto check : {checkBundle, checkLibraries, checkUserData, checkLog, checkTemporaryFolder, checkBookmarks,
                             checkContainer, checkMarkers})
        check(list);
    if (isInBundle()) {
        for (const auto check : {checkAccountHelper, checkGlobalFile, checkBundledFiles, checkLanguages, checkStores})
            check(list);
    }
    checkAccountStore(list);
    return list.json();
}

bool hasProblems(const Json &examination)
{
    const Json &rows = examination.at("checks");
    return std::any_of(rows.begin(), rows.end(), [](const Json &row) { return row.at("state") == "problem"; });
}

} // namespace inspect
