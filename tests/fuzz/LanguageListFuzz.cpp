#include "config/MacGlobalSetting.h"
#include "tests/fuzz/Target.h"

/// Whatever "language.json" holds, the language of every name that is listed is found. Outside a bundle it lies below
/// the current folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/language-fuzz"));
    static const bool isThere = QDir::setCurrent(folder.path()) && QDir().mkpath(QStringLiteral("cfgdata"));
    require(isThere);
    writeFile(QStringLiteral("cfgdata/language.json"), data, size);
    std::string found;
    for (const std::string &name : MacGlobalSetting::GetSupportLanguageList())
        require(MacGlobalSetting::GetParticularLanguageInfo("show_name", name, "show_name", found) && found == name);
    static_cast<void>(MacGlobalSetting::GetParticularLanguageInfo("code", "en", "english_name", found));
    return 0;
}
