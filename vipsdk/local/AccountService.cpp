#include "vipsdk/local/AccountService.h"

#include "vipsdk/include/VipSdkDefine.h"
#include "vipsdk/local/StoreLock.h"

#include <QRegularExpression>

namespace local_sdk {

namespace {

using namespace vip_sdk;

// RFC 5321, 4.5.3.1.
constexpr int kMaxNameLength = 64;
constexpr int kMaxAddressLength = 254;
constexpr int kRegisteredByEmail = 1;
constexpr int kOpenIdSize = 16;
constexpr int kTokenSize = 32;
constexpr int kLoginAttempts = 8;

/// The part before the "@", which is the name that an account starts with.
QString nameOf(const QString &address)
{
    return address.left(address.lastIndexOf('@'));
}

/// 0, or what is wrong with an e-mail address: a dot-atom (RFC 5322, 3.2.3) at a domain of several labels (RFC 1035).
int addressError(const QString &address)
{
    static const QRegularExpression wellFormed(
        QRegularExpression::anchoredPattern(QString(R"(ATOM(\.ATOM)*@(LABEL\.)+LABEL)")
                                                .replace("ATOM", "[\\w!#$%&'*+/=?^`{|}~-]+")
                                                .replace("LABEL", R"([A-Za-z\d]([A-Za-z\d-]{0,61}[A-Za-z\d])?)")));
    if (nameOf(address).size() > kMaxNameLength)
        return LOGIN_ERROR_NAME_TOO_LONG;
    if (address.size() > kMaxAddressLength || !wellFormed.match(address).hasMatch())
        return LOGIN_ERROR_MALFORMED_EMAIL;
    return 0;
}

QJsonObject newAccount(const QString &address)
{
    return {{"open_id", randomText(kOpenIdSize)}, {"nickname", nameOf(address)}};
}

Session newSession(const QString &address, const QJsonObject &account)
{
    return {account.value("open_id").toString(),
            randomText(kTokenSize),
            account.value("nickname").toString(),
            account.value("avatar").toString(),
            address,
            kRegisteredByEmail};
}

/// The store while nobody else changes it.
struct HeldStore
{
    explicit HeldStore(const Store &store) : lock(store.directory()), accounts(store.accounts()), state(store.session())
    {
    }
    [[nodiscard]] bool isUsable() const { return lock.isHeld() && accounts && state; }

    StoreLock lock;
    std::optional<QJsonObject> accounts;
    std::optional<SessionState> state;
};

QString addressOf(const QJsonObject &accounts, const QString &openId)
{
    for (auto account = accounts.begin(); account != accounts.end(); ++account)
        if (account.value().toObject().value("open_id").toString() == openId)
            return account.key();
    return {};
}

} // namespace

AccountService::LoginResult AccountService::login(const QString &user, const Password &password) const
{
    if (const int error = addressError(user))
        return {error};
    if (password.isEmpty())
        return {LOGIN_ERROR_WRONG_PASSWORD};

    const QString address = user.toLower();
    for (int attempt = 0; attempt < kLoginAttempts; ++attempt) {
        const std::optional<QJsonObject> accounts = m_store.accounts();
        if (!accounts || !m_store.session())
            return {LOGIN_ERROR_UNAVAILABLE};

        // Digests take their time, in which others may have the store.
        const QJsonValue known = accounts->value(address);
        const bool isNew = known.isUndefined();
        QJsonObject account = isNew ? newAccount(address) : known.toObject();
        const QJsonObject digest = account.value("password").toObject();
        if (!isNew && !password.has(digest))
            return {LOGIN_ERROR_WRONG_PASSWORD};
        if (isOutdated(digest))
            account.insert("password", password.digest());

        HeldStore held(m_store);
        if (!held.isUsable() || isOutdated(account.value("password").toObject()))
            return {LOGIN_ERROR_UNAVAILABLE};
        if (held.accounts->value(address) != known)
            continue; // another process came before
        if (account == known.toObject())
            held.accounts.reset(); // stays as it is
        else
            held.accounts->insert(address, account);
        held.state->session = newSession(address, account);
        if (held.state->session->openId.isEmpty() || !m_store.set(*held.state, held.accounts))
            return {LOGIN_ERROR_UNAVAILABLE};
        return {0, isNew};
    }
    return {LOGIN_ERROR_UNAVAILABLE};
}

bool AccountService::logout() const
{
    const std::optional<SessionState> state = m_store.session();
    if (state && !state->session)
        return true;
    HeldStore held(m_store);
    if (!held.lock.isHeld() || !held.state)
        return false;
    held.state->session.reset();
    return m_store.set(*held.state) || m_store.removeSession(); // for which there is room on a full disk, too
}

int AccountService::closeAccount() const
{
    HeldStore held(m_store);
    if (!held.isUsable())
        return LOGIN_ERROR_UNAVAILABLE;
    if (!held.state->session)
        return LOGIN_ERROR_NO_SUCH_ACCOUNT;
    held.accounts->remove(addressOf(*held.accounts, held.state->session->openId));
    held.state->session.reset();
    ++held.state->closures;
    return m_store.set(*held.state, held.accounts) ? 0 : LOGIN_ERROR_UNAVAILABLE;
}

bool AccountService::adopt(Session session) const
{
    if (session.openId.isEmpty() || session.token.isEmpty())
        return false;
    HeldStore held(m_store);
    if (!held.isUsable())
        return false;
    session.email = addressOf(*held.accounts, session.openId);
    if (session.email.isEmpty()) {
        held.accounts.reset(); // stays as it is
    } else {
        QJsonObject account = held.accounts->value(session.email).toObject();
        account.insert("nickname", session.nickname);
        account.insert("avatar", session.avatar);
        held.accounts->insert(session.email, account);
        session.registerFrom = kRegisteredByEmail;
    }
    held.state->session = std::move(session);
    return m_store.set(*held.state, held.accounts);
}

} // namespace local_sdk
