#include "config/MacGlobalSetting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>

/// Whatever "language.json" holds, the language of every name that is listed is found. Outside a bundle it lies below
/// the current folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/language-fuzz"));
    static const bool isThere = QDir::setCurrent(folder.path()) && QDir().mkpath(QStringLiteral("cfgdata"));
    QFile file(QStringLiteral("cfgdata/language.json"));
    if (!isThere || !file.open(QIODevice::WriteOnly))
        std::abort();
    file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    file.close();
    std::string found;
    for (const std::string &name : MacGlobalSetting::GetSupportLanguageList()) {
        if (!MacGlobalSetting::GetParticularLanguageInfo("show_name", name, "show_name", found) || found != name)
            std::abort();
    }
    static_cast<void>(MacGlobalSetting::GetParticularLanguageInfo("code", "en", "english_name", found));
    return 0;
}
