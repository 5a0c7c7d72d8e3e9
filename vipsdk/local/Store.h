#pragma once

#include <QJsonObject>
#include <QString>
#include <optional>
#include <string>

namespace local_sdk {

struct Session
{
    QString openId;
    QString token;
    QString nickname;
    QString avatar;
    QString email;
    int registerFrom = 0;
};

/// What all processes of the user share.
struct SessionState
{
    /// Another text with every change.
    QString change;
    /// How many accounts were closed so far.
    int closures = 0;
    std::optional<Session> session;
};

/// The files of the account service in a folder: the accounts, by e-mail address, and the session. Reading creates
/// nothing. Files of a newer format and files that cannot be read, or that others can write to, are left alone and have
/// no answer.
class Store
{
public:
    explicit Store(std::string directory);

    [[nodiscard]] const std::string &directory() const { return m_directory; }

    /// No accounts when there is no file; no answer also for a malformed one, which somebody may still repair.
    [[nodiscard]] std::optional<QJsonObject> accounts() const;
    /// Logged out when there is no file or a malformed one.
    [[nodiscard]] std::optional<SessionState> session() const;

    /// Replaces the session, which gets a new `change`, and before it the accounts, unless they are none. When it fails
    /// both stay as they are. For the holder of a StoreLock.
    [[nodiscard]] bool set(const SessionState &state, const std::optional<QJsonObject> &accounts = {}) const;
    /// Ends the session without writing anything. For the holder of a StoreLock.
    [[nodiscard]] bool removeSession() const;

private:
    std::string m_directory;
};

} // namespace local_sdk
