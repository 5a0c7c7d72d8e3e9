#include "tests/fuzz/Target.h"
#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"

#include <nlohmann/json.hpp>

/// Whatever lies in the place of session and accounts, the user's information is JSON, and there is some when somebody
/// is logged in.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/sdk-fuzz"));
    static const int chosen = ::setenv("ONDVIPSDK_DATA_DIR", folder.path().toUtf8().constData(), 1);
    static_cast<void>(chosen);
    for (const char *name : {"session.json", "accounts.json"})
        writeFile(folder.filePath(name), data, size);
    vip_sdk::VipSdkCoreInterfaceImpl sdk;
    wchar_t *json = nullptr;
    const bool hasText = sdk.GetUserInfoJson(&json);
    require(!sdk.IsLogin() || hasText);
    require(!hasText || nlohmann::json::accept(std::wstring(json)));
    sdk.FreeString(json);
    return 0;
}
