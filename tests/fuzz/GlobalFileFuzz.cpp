#include "config/GlobalConfigFile.h"
#include "tests/fuzz/Target.h"

/// Whatever "mk.dat" holds, a key that is not there has the default or 0. Outside a bundle it lies in the current
/// folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/global-fuzz"));
    static const bool isThere = QDir::setCurrent(folder.path());
    require(isThere);
    writeFile(QStringLiteral("mk.dat"), data, size);
    for (const char *key : {"enable_log", "group_name"}) {
        static_cast<void>(GetIntValueFromMKDat("common", key, 7));
        static_cast<void>(GetStrValueFromMKDat("common", key, "default"));
    }
    const long absent = GetIntValueFromMKDat(std::string(300, 's'), "k", 7);
    require(absent == 7 || absent == 0);
    return 0;
}
