#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"

#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>

/// Whatever lies in the place of session and accounts, the user's information is JSON, and there is some when somebody
/// is logged in.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/sdk-fuzz"));
    static const int chosen = ::setenv("ONDVIPSDK_DATA_DIR", folder.path().toUtf8().constData(), 1);
    static_cast<void>(chosen);
    for (const char *name : {"session.json", "accounts.json"}) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    }
    vip_sdk::VipSdkCoreInterfaceImpl sdk;
    wchar_t *json = nullptr;
    const bool hasText = sdk.GetUserInfoJson(&json);
    if ((sdk.IsLogin() && !hasText) || (hasText && !nlohmann::json::accept(std::wstring(json))))
        std::abort();
    sdk.FreeString(json);
    return 0;
}
