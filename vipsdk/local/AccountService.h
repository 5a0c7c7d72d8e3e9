#pragma once

#include "vipsdk/local/Password.h"
#include "vipsdk/local/Store.h"

namespace local_sdk {

/// The accounts and the session of the user, on disk. Holds nothing itself; callable from any thread and beside other
/// processes.
class AccountService
{
public:
    struct LoginResult
    {
        int error = 0; ///< a vip_sdk::LoginError
        bool created = false;
    };

    explicit AccountService(std::string directory) : m_store(std::move(directory)) { }

    [[nodiscard]] const std::string &directory() const { return m_store.directory(); }

    /// No answer when the store cannot be used.
    [[nodiscard]] std::optional<SessionState> state() const { return m_store.session(); }

    /// Logs in with an e-mail address; an unknown one gets an account.
    [[nodiscard]] LoginResult login(const QString &user, const Password &password) const;
    /// Ends the session; true when there is none afterwards.
    [[nodiscard]] bool logout() const;
    /// Deletes the account of the session and ends the session. Returns 0 or a vip_sdk::LoginError.
    [[nodiscard]] int closeAccount() const;
    /// Makes `session` the session; its e-mail address is looked up. False without open id or token.
    [[nodiscard]] bool adopt(Session session) const;

private:
    Store m_store;
};

} // namespace local_sdk
