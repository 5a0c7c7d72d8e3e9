#pragma once

#include "tests/support/TestFiles.h"
#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"
#include "vipsdk/include/VipSdkDefine.h"

#include <QPasswordDigestor>
#include <QString>
#include <cstdlib>
#include <string>

namespace test {

/// A store of the SDK in a folder of its own, with an account seed@example.org whose password "seed" is cheap to check.
class TestStore
{
public:
    TestStore()
    {
        ::setenv("ONDVIPSDK_DATA_DIR", path("").c_str(), 1);
        writeFile(
            path("accounts.json"),
            R"({"format":1,"accounts":{"seed@example.org":{"open_id":"seed","nickname":"s","password":{)"
            R"("salt":"00","iterations":1,"digest":")"
                + QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, "seed", QByteArray(1, '\0'), 1, 32)
                      .toHex()
                      .toStdString()
                + R"("}}}})");
    }

    [[nodiscard]] std::string path(const std::string &name) const { return m_dir / ("store/" + name); }

    /// Logs in; 0 or the error.
    [[nodiscard]] static int login(const wchar_t *user = L"seed@example.org", const wchar_t *password = L"seed")
    {
        int error = -1;
        bool created = false;
        const bool done = vip_sdk::VipSdkCoreInterfaceImpl().Login(user, password, error, created);
        return done == (error == 0) ? error : -1;
    }

    /// The user's information, empty when it cannot be read.
    [[nodiscard]] static std::wstring userInfo()
    {
        vip_sdk::VipSdkCoreInterfaceImpl core;
        wchar_t *json = nullptr;
        if (!core.GetUserInfoJson(&json))
            return {};
        std::wstring text = json;
        core.FreeString(json);
        return text;
    }

private:
    TempDir m_dir;
};

} // namespace test
