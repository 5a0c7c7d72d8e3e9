#include "tools/inspect/FileChecks.h"

#include "config/ConfigFileUtil.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "config/MacGlobalSetting.h"
#include "paths/PathUtils.h"
#include "paths/RegularFile_p.h"
#include "tools/inspect/Registry.h"

#include <QSettings>
#include <algorithm>
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

bool isMalformed(const std::string &path)
{
    const QSettings settings(QString::fromStdString(path), QSettings::IniFormat);
    static_cast<void>(settings.allKeys()); // sections are looked at when they are asked for
    return settings.status() == QSettings::FormatError;
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
        findings.problem(path, "too large, or with a serialized value: it is not read");
    else if (form == Form::ini && isMalformed(path))
        findings.problem(path, "malformed: lines that are neither [section], KEY=VALUE nor ;comment are passed over");
}

void checkStore(const std::string &path, Findings &findings)
{
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
         {paths->GetUserDataPath("config.ini"), paths->GetUserDataPath("config_count.ini"), overlay}) {
        if (typeOf(path) != fs::file_type::not_found)
            checkStore(path, findings);
    }
    if (!isWritable(fs::path(overlay).parent_path()))
        findings.note(overlay, "its folder is not writable: the choice of the account's product is lost");
    checkRegistry(findings);
}

} // namespace inspect
