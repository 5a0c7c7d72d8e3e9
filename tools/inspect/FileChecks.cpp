#include "tools/inspect/FileChecks.h"

#include "config/ConfigFileUtil.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "config/MacGlobalSetting.h"
#include "paths/PathUtils.h"
#include "paths/RegularFile_p.h"
#include "tools/inspect/Registry.h"

#include <QLockFile>
#include <QSysInfo>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <map>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace inspect {

namespace {

enum class Form { text, ini, pdf };

constexpr int kLargestChecked = 256 << 20; // bytes: more than any of the files may have

/// A file of the bundle's resources.
struct BundledFile
{
    const char *name;
    Form form;
    const char *loss;
};

constexpr BundledFile kBundledFiles[] = {
    {"cfgdata/componentConfig.ini", Form::ini, "names, addresses, ids and switches are the defaults"},
    {"cfgdata/cfgdata.ini", Form::ini, "its settings are the defaults"},
    {"cfgdata/loadcfg.ini", Form::ini, "no folder is kept from loading by itself"},
    {"cfgdata/language.json", Form::text, "there is no language to choose"},
    {"ressrc/chs/upnest.svr", Form::ini, "there is no distribution data"},
    {"data/mainversion.ini", Form::ini, "the version date is empty"},
    {"data/help.pdf", Form::pdf, "the welcome document is not brought up to date"},
    {"ThirdPartyLegalNotices.txt", Form::text, "there are no legal notices to show"},
};

std::string resource(const char *name)
{
    return MacConfigPath::GetInstance()->GetAppConfigPath(name);
}

/// The keys that are read as numbers, by the end of their file's path.
const std::map<std::string, QStringList> kNumbers = {
    {"cfgdata/componentConfig.ini",
     {"product/product_edition", "product/ocr_app_id", "product/ocr_app_id_tolva", "product/is_tv_product",
      "product/is_help_enable", "product/vip_id"}},
    {"ressrc/chs/upnest.svr",
     {"Common/Edition", "Common/product_id", "Common/tid1", "Common/tid2", "Common/tod1", "Common/tod2", "Common/TryNo",
      "Common/switch_generate_uuid"}},
    {"cfgdata/cfgdata.ini.user", {"account/account"}},
    {"reg/common.ini",
     {"product/tid1", "product/tid2", "product/tod1", "product/tod2", "product/iid", "product/pid", "product/tryno",
      "product/installtime"}},
};

QStringList numbersOf(const std::string &path)
{
    for (const auto &[end, keys] : kNumbers) {
        if (path.size() > end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0)
            return keys;
    }
    return {};
}

/// What of the first hundred lines with a mistake is lost.
void checkLines(const std::string &path, Findings &findings)
{
    const QStringList numbers = numbersOf(path);
    int count = 0;
    ConfigFileUtil::ForEachLine(
        QString::fromStdString(path), [&](int line, const QString &key, const std::optional<QVariant> &value) {
            bool isNumber = true;
            if (value && numbers.contains(key))
                value->toLongLong(&isNumber);
            if ((value && isNumber) || ++count > 100)
                return;
            if (key.isNull())
                findings.problem(path, "neither [section], KEY=VALUE nor ;comment: the line is passed over", line);
            else
                findings.problem(
                    path,
                    key.toStdString()
                        + (value ? " is no number and reads as 0" : " is a serialized value and reads as absent"),
                    line);
        });
}

/// What a lock file says that keeps the writers of a store waiting.
void checkLock(const std::string &store, Findings &findings)
{
    const std::string path = store + ".lock";
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type == fs::file_type::not_found)
        return;
    if (type != fs::file_type::regular)
        return findings.problem(path, "no regular file: what it locks takes no changes");
    qint64 process = 0;
    QString host;
    QString program;
    if (!QLockFile(QString::fromStdString(path)).getLockInfo(&process, &host, &program))
        findings.note(path, "names no owner: the next change may wait for some seconds");
    else if (host != QSysInfo::machineHostName())
        findings.note(path,
                      "of another machine, " + host.toStdString() + ": the next change may wait for some seconds");
    else if (::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH)
        findings.note(path, "stale: its owner, process " + std::to_string(process) + ", is gone");
    else
        findings.note(path, "held by process " + std::to_string(process) + ", " + program.toStdString());
}

void checkContent(const std::string &path, Form form, const std::string &loss, Findings &findings)
{
    const auto [state, content] = readRegularFile(path, kLargestChecked);
    if (state == FileContent::State::missing || state == FileContent::State::irregular)
        findings.problem(path, "no regular file" + loss);
    else if (state == FileContent::State::unreadable)
        findings.problem(path, "cannot be read" + loss);
    else if (state == FileContent::State::tooLarge)
        findings.problem(path, "too large" + loss);
    else if (form == Form::pdf && !content.startsWith("%PDF-"))
        findings.problem(path, "no PDF document" + loss);
    else if (form != Form::pdf && content.contains('\0'))
        findings.problem(path, "binary, no text: what it says is lost");
    else if (form == Form::ini && !ConfigFileUtil::IsSound(QString::fromStdString(path)))
        findings.problem(path, "too large: it is not read");
    else if (form == Form::ini)
        checkLines(path, findings);
}

void checkStore(const std::string &path, Findings &findings)
{
    checkLock(path, findings);
    if (typeOf(path) == fs::file_type::not_found)
        return;
    checkContent(path, Form::ini, ": it holds nothing, and takes nothing", findings);
    if (typeOf(path) == fs::file_type::regular && !isWritable(path))
        findings.problem(path, "read-only: changes are lost");
}

void checkLanguages(Findings &findings)
{
    const std::string path = resource("cfgdata/language.json");
    const std::vector<std::string> names = MacGlobalSetting::GetSupportLanguageList();
    if (names.empty() && typeOf(path) == fs::file_type::regular)
        findings.problem(path, "malformed, too large, or without languages: there is none to choose");
    for (auto name = names.begin(); name != names.end(); ++name) {
        std::string code;
        if (std::find(names.begin(), name, *name) != name)
            findings.problem(path, "\"" + *name + "\" stands in the menu more than once, and means the first");
        else if (MacGlobalSetting::GetParticularLanguageInfo("show_name", *name, "code", code) && code.empty())
            findings.problem(path, "\"" + *name + "\" has no code and cannot be chosen");
    }

    const std::string common = registryFolder() + "common.ini";
    std::string name;
    if (names.empty() || !MacGlobalConfig::isInternationalApp() || typeOf(common) != fs::file_type::regular)
        return;
    const std::string code = MacGlobalSetting::GetCurrentLanguage();
    if (!MacGlobalSetting::GetParticularLanguageInfo("code", code, "show_name", name))
        findings.problem(common, "the language in use, \"" + code + "\", is not one of the menu");
}

void checkRegistry(Findings &findings)
{
    const std::string folder = registryFolder();
    const fs::file_type type = typeOf(folder.substr(0, folder.size() - 1)); // a file has no "/" behind it
    if (type == fs::file_type::not_found)
        return;
    if (type != fs::file_type::directory)
        return findings.problem(folder, "no folder: the registry holds nothing");
    if (!isWritable(folder))
        findings.problem(folder, "not writable: changes to the registry are lost");
    std::vector<std::string> keys;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() == ".ini")
            keys.push_back(entry->path().string());
    }
    if (error)
        findings.problem(folder, "cannot be looked at (" + error.message() + ")");
    std::sort(keys.begin(), keys.end());
    for (const std::string &path : keys)
        checkStore(path, findings);
}

} // namespace

fs::file_type typeOf(const std::string &path)
{
    std::error_code error;
    return fs::status(path, error).type();
}

bool isWritable(const fs::path &path)
{
    return ::access(path.c_str(), W_OK) == 0;
}

void checkBundledFiles(Findings &findings)
{
    for (const BundledFile &file : kBundledFiles) {
        const std::string path = resource(file.name);
        const std::string loss = std::string(": ") + file.loss;
        if (!path.empty() && typeOf(path) == fs::file_type::not_found)
            findings.note(path, "missing" + loss);
        else if (!path.empty())
            checkContent(path, file.form, loss, findings);
    }
    checkLanguages(findings);
}

void checkStores(Findings &findings)
{
    const std::string overlay = PathUtils::getConfigDataPath().toStdString() + ".user";
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    for (const std::string &path :
         {paths->GetUserDataPath("config.ini"), paths->GetUserDataPath("config_count.ini"), overlay})
        checkStore(path, findings);
    if (!isWritable(fs::path(overlay).parent_path()))
        findings.note(overlay, "its folder is not writable: the choice of the account's product is lost");
    checkRegistry(findings);
}

} // namespace inspect
