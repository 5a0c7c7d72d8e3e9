#include "config/ConfigFileUtil.h"
#include "config/MacConfigPath.h"
#include "config/MacGlobalConfig.h"
#include "config/MacGlobalSetting.h"
#include "paths/PathUtils.h"
#include "paths/RegularFile_p.h"
#include "tools/inspect/Checks.h"
#include "tools/inspect/Registry.h"

#include <QLockFile>
#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <set>
#include <sys/file.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace inspect {

namespace {

constexpr int kMaxIniSize = 16 << 20;
constexpr int kMaxLanguagesSize = 1 << 20;
constexpr int kMaxLockSize = 4 << 10;
constexpr auto kLongestTurn = std::chrono::seconds(5);
constexpr int kMaxDocumentSize = 64 << 20;
constexpr int kMaxFindings = 20; // of one kind in one file: a foreign file has thousands
constexpr int kMaxKeySize = 100;
constexpr int kMaxUnknown = 1000; // keys of a file that may be meant for others; of many none is

constexpr char kReinstall[] = "Install the product again.";
constexpr char kMoveAway[] = "Move it away: the product makes a new one.";

enum class Form { text, ini, utf8Ini, pdf };

/// A file of the bundle's resources, and what its loss means.
struct BundledFile
{
    const char *name;
    Form form;
    const char *loss;
};

constexpr BundledFile kBundledFiles[] = {
    {"cfgdata/componentConfig.ini", Form::utf8Ini, "Names, addresses, ids and switches are the defaults."},
    {"cfgdata/cfgdata.ini", Form::ini, "Its settings are the defaults."},
    {"cfgdata/loadcfg.ini", Form::ini, "No folder is kept from loading by itself."},
    {"ressrc/chs/upnest.svr", Form::ini, "There is no distribution data: channel and try number are defaults."},
    {"data/mainversion.ini", Form::ini, "The version date is empty."},
    {"data/help.pdf", Form::pdf, "The welcome document is not brought up to date."},
    {"ThirdPartyLegalNotices.txt", Form::text, "There are no legal notices to show."},
};

/// The keys of INI files that the library reads, by file; a key that is nearly one of them is a slip of the pen.
const std::vector<std::string> &knownKeys()
{
    static constexpr const char *names[] = {
        "product/product_name",
        "product/product_edition",
        "product/ocr_app_id",
        "product/ocr_app_id_tolva",
        "product/is_tv_product",
        "product/is_help_enable",
        "product/vip_id",
        "product/service_name",
        "product/reg_name",
        "product/host",
        "product/guid",
        "product/uninstall_key",
        "title/top_left_title",
        "title/window_title",
        "associate/executor",
        "associate/description",
        "associate/backup",
        "associate/avoid",
        "associate_dialog/product_name",
        "about/offical_url",
        "about/licence_url",
        "about/privacy_url",
        "about/copyright",
        "file/reader_name",
        "file/cache_dir",
        "internation/report_id",
        "internation/report_prefix",
        "version/date",
        "Common/Edition",
        "Common/TryNo",
        "Common/tid1",
        "Common/tid2",
        "Common/tod1",
        "Common/tod2",
        "Common/product_id",
        "Common/chan_name",
        "Common/uuid_reg",
        "Common/uuid_reg_key",
        "Common/switch_generate_uuid",
        "product/tid1",
        "product/tid2",
        "product/tod1",
        "product/tod2",
        "product/iid",
        "product/pid",
        "product/tryno",
        "product/installtime",
        "product/uuid",
        "product/svrid",
        "language/current_language",
        "account/account",
    };
    static const std::vector<std::string> all(std::begin(names), std::end(names));
    return all;
}

/// Those of them that are numbers.
const std::set<std::string> &numbers()
{
    static constexpr const char *names[] = {
        "product/product_edition",
        "product/ocr_app_id",
        "product/ocr_app_id_tolva",
        "product/is_tv_product",
        "product/is_help_enable",
        "product/vip_id",
        "Common/Edition",
        "Common/TryNo",
        "Common/tid1",
        "Common/tid2",
        "Common/tod1",
        "Common/tod2",
        "Common/product_id",
        "Common/switch_generate_uuid",
        "product/tid1",
        "product/tid2",
        "product/tod1",
        "product/tod2",
        "product/iid",
        "product/pid",
        "product/tryno",
        "product/installtime",
        "account/account",
    };
    static const std::set<std::string> all(std::begin(names), std::end(names));
    return all;
}

std::string resource(const char *name)
{
    return MacConfigPath::GetInstance()->GetAppConfigPath(name);
}

bool isUtf8(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

void checkLine(int line, const QString &key, const std::optional<QVariant> &value, const std::string &path,
               int &unknown, Checklist &list)
{
    if (key.isNull())
        return list.problem({"a line that is neither [section], KEY=VALUE nor ;comment", "It is passed over.",
                             "Mend the line, or put a ; in front of it.", path, line});
    if (value && key.size() > kMaxKeySize)
        return;
    const std::string name = key.toStdString();
    if (!value)
        return list.problem({name + " is a serialized value, which is not unpacked", "It counts as absent.",
                             "Write it as plain text, or take it out.", path, line});
    bool isNumber = true;
    static_cast<void>(value->toLongLong(&isNumber));
    if (numbers().count(name) != 0 && !isNumber)
        return list.problem({name + " is no number", "It counts as 0.", "Write a whole number.", path, line});
    const bool isKnown = std::find(knownKeys().begin(), knownKeys().end(), name) != knownKeys().end();
    const std::string meant = isKnown || ++unknown > kMaxUnknown ? std::string() : nearest(name, knownKeys());
    if (!meant.empty())
        list.note({name + " is not a key that the library reads", "It may have no effect.",
                   "Write " + meant + ", if that is what is meant.", path, line});
}

void checkIni(const QByteArray &bytes, bool mustBeUtf8, const std::string &path, Checklist &list)
{
    if (mustBeUtf8 && !isUtf8(bytes))
        list.problem({"not in UTF-8", "Letters beyond ASCII read as others.", "Save the file in UTF-8.", path});
    const std::size_t most = list.size() + kMaxFindings;
    int unknown = 0;
    ConfigFileUtil::ForEachLine(QString::fromStdString(path),
                                [&](int line, const QString &key, const std::optional<QVariant> &value) {
                                    if (list.size() < most)
                                        checkLine(line, key, value, path, unknown, list);
                                });
}

/// Of a file that is there.
void checkContent(const std::string &path, Form form, const char *loss, const char *remedy, Checklist &list)
{
    const int limit = form == Form::pdf || form == Form::text ? kMaxDocumentSize : kMaxIniSize;
    const FileContent file = readRegularFile(path, limit);
    if (file.state == FileContent::State::irregular)
        list.problem({"no regular file", loss, remedy, path});
    else if (file.state == FileContent::State::tooLarge)
        list.problem({"larger than " + std::to_string(limit >> 20) + " MiB", loss, remedy, path});
    else if (!file.isRead())
        list.problem({"cannot be read", loss, "Give the user permission to read it.", path});
    else if (form == Form::pdf && !file.bytes.startsWith("%PDF-"))
        list.problem({"no PDF document", loss, remedy, path});
    else if (form != Form::pdf && file.bytes.contains('\0'))
        list.problem({"binary, no text", "What it says is lost.", remedy, path});
    else if (form == Form::ini || form == Form::utf8Ini)
        checkIni(file.bytes, form == Form::utf8Ini, path, list);
}

/// Whether somebody has the lock: QLockFile and the stores hold it as long as they are at it.
bool isHeld(const std::string &lock)
{
    const int file = ::open(lock.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    const bool isHeld = file < 0 || ::flock(file, LOCK_SH | LOCK_NB) != 0;
    ::close(file);
    return isHeld;
}

void checkLock(const std::string &store, Checklist &list)
{
    const std::string path = store + ".lock";
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type == fs::file_type::not_found || type == fs::file_type::none) // its folder is closed to the user
        return;
    const char *effect = "Changes wait for it, five seconds at most.";
    if (type != fs::file_type::regular)
        return list.problem(
            {"something that is no file lies in the place of a lock", "Changes are lost.", "Move it away.", path});
    qint64 process = 0;
    QString host;
    QString program;
    // QLockFile reads the whole file, which may be anybody's.
    if (fs::file_size(path, error) > kMaxLockSize
        || !QLockFile(QString::fromStdString(path)).getLockInfo(&process, &host, &program))
        list.note({"a lock that names nobody", effect, "Remove it when no program of the product runs.", path});
    else if (!host.isEmpty() && host != QSysInfo::machineHostName())
        list.note({"a lock of another machine, " + host.toStdString(), effect,
                   "Remove it unless that machine uses the same folder.", path});
    else if (::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH)
        list.note({"a lock of a program that has ended", "The next change may remove it.",
                   "Remove it when changes are lost.", path});
    else if (!isHeld(path))
        list.note({"a lock that nobody holds", "The next change takes it over.", "Nothing needs to be done.", path});
    else if (fs::file_time_type::clock::now() - fs::last_write_time(path, error) > kLongestTurn)
        list.note(
            {"a lock that " + program.toStdString() + ", process " + std::to_string(process) + ", does not give back",
             "Changes are lost while it does not.", "End that program if it hangs.", path});
}

void checkStore(const std::string &path, Checklist &list)
{
    checkLock(path, list);
    if (typeOf(path) == fs::file_type::not_found)
        return;
    checkContent(path, Form::ini, "It holds nothing, and takes nothing.", kMoveAway, list);
    if (typeOf(path) == fs::file_type::regular && !isWritable(path))
        list.problem({"read-only", "Changes are lost.", "Give the user permission to write to it.", path});
}

void checkRegistry(Checklist &list)
{
    std::string folder = registryFolder();
    folder.pop_back(); // a file has no "/" behind it
    const fs::file_type type = typeOf(folder);
    if (type == fs::file_type::not_found)
        return;
    if (type != fs::file_type::directory && type != fs::file_type::none)
        return list.problem(
            {"no folder", "The registry holds nothing, the chosen language neither.", "Move it away.", folder});
    if (type == fs::file_type::directory && !isWritable(folder))
        list.problem(
            {"not writable", "Changes to the registry are lost.", "Give the user permission to write to it.", folder});
    std::set<std::string> keys;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        fs::path path = entry->path();
        if (path.extension() == ".lock")
            path.replace_extension(); // of a key that may not be there yet
        if (path.extension() == ".ini")
            keys.insert(path.string());
    }
    if (error)
        list.problem({"cannot be looked at (" + error.message() + ")", "Its values are lost.",
                      "Give the user permission to read it.", folder});
    for (const std::string &path : keys)
        checkStore(path, list);
}

/// Whether the list can be chosen from.
bool checkLanguageEntries(const QByteArray &bytes, const std::string &path, Checklist &list)
{
    const Json all = Json::parse(bytes.begin(), bytes.end(), nullptr, false);
    const Json entries = all.is_object() ? all.value("languages", Json()) : Json();
    if (!entries.is_array() || entries.empty()) {
        list.problem({"malformed, or without languages", "There is no language to choose.", kReinstall, path});
        return false;
    }
    std::set<std::string> names;
    int number = 0;
    for (const Json &entry : entries) {
        const auto text = [&entry](const char *key) {
            return entry.is_object() && entry.contains(key) && entry[key].is_string() ? entry[key].get<std::string>()
                                                                                      : "";
        };
        const std::string name = text("show_name");
        const std::string which = name.empty() ? "entry " + std::to_string(number + 1) : '"' + name + '"';
        if (name.empty() || text("code").empty())
            list.problem({which + " has no " + (name.empty() ? "name" : "code"),
                          name.empty() ? "It cannot be chosen." : "Who chooses it has no language.",
                          R"(Give it "show_name" and "code".)", path});
        else if (!names.insert(name).second)
            list.problem(
                {which + " stands in the menu more than once", "Both mean the first.", "Take one of them out.", path});
        ++number;
    }
    return true;
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

void checkBundledFiles(Checklist &list)
{
    list.begin("bundled-files", "Files of the bundle");
    for (const BundledFile &file : kBundledFiles) {
        const std::string path = resource(file.name);
        if (typeOf(path) == fs::file_type::not_found)
            list.note({"missing", file.loss, kReinstall, path});
        else
            checkContent(path, file.form, file.loss, kReinstall, list);
    }
}

void checkLanguages(Checklist &list)
{
    list.begin("languages", "Languages");
    const std::string path = resource("cfgdata/language.json");
    const FileContent file = readRegularFile(path, kMaxLanguagesSize);
    if (!file.isRead())
        return list.problem(
            {file.state == FileContent::State::missing ? "missing" : "no readable file of at most 1 MiB",
             "There is no language to choose.", kReinstall, path});
    const std::string common = registryFolder() + "common.ini";
    std::string name;
    if (!checkLanguageEntries(file.bytes, path, list) || !MacGlobalConfig::isInternationalApp()
        || typeOf(common) != fs::file_type::regular)
        return;
    const std::string code = MacGlobalSetting::GetCurrentLanguage();
    if (!MacGlobalSetting::GetParticularLanguageInfo("code", code, "show_name", name))
        list.problem({"the language in use, \"" + code + "\", is not one of the menu", "Texts may be in English.",
                      "Choose a language: pdforvell-inspect language NAME.", common});
}

void checkStores(Checklist &list)
{
    list.begin("stores", "Settings, counters and registry");
    const std::string overlay = PathUtils::getConfigDataPath().toStdString() + ".user";
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    for (const std::string &path :
         {paths->GetUserDataPath("config.ini"), paths->GetUserDataPath("config_count.ini"), overlay})
        checkStore(path, list);
    checkLock(resource("ressrc/chs/upnest.svr"), list);
    if (!isWritable(fs::path(overlay).parent_path()))
        list.note({"its folder is not writable", "The choice of the account's product is lost.",
                   "Give the user permission to write to the folder.", overlay});
    checkRegistry(list);
}

} // namespace inspect
