#include "config/GlobalConfigFile.h"
#include "config/MacGlobalSetting.h"
#include "tests/fuzz/Target.h"

/// Whatever "mk.dat" and "language.json" hold: a key that is not there has the default or 0, and the language of every
/// name that is listed is found. Outside a bundle they lie in the current folder and below it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/application-fuzz"));
    static const bool isThere = QDir::setCurrent(folder.path()) && QDir().mkpath(QStringLiteral("cfgdata"));
    require(isThere);
    for (const char *name : {"mk.dat", "cfgdata/language.json"})
        writeFile(name, data, size);
    for (const char *key : {"enable_log", "group_name"}) {
        static_cast<void>(GetIntValueFromMKDat("common", key, 7));
        static_cast<void>(GetStrValueFromMKDat("common", key, "default"));
    }
    const long absent = GetIntValueFromMKDat(std::string(300, 's'), "k", 7);
    require(absent == 7 || absent == 0);
    std::string found;
    for (const std::string &name : MacGlobalSetting::GetSupportLanguageList())
        require(MacGlobalSetting::GetParticularLanguageInfo("show_name", name, "show_name", found) && found == name);
    static_cast<void>(MacGlobalSetting::GetParticularLanguageInfo("code", "en", "english_name", found));
    return 0;
}
