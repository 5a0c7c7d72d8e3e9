#include "vipsdk/local/AccountService.h"

#include "vipsdk/include/VipSdkDefine.h"
#include "vipsdk/local/Password.h"
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

/// The part before the "@", which is the name that an account starts with.
QString nameOf(const QString &address)
{
    return address.left(address.lastIndexOf('@'));
}

/// 0, or what is wrong with an e-mail address: a dot-atom (RFC 5322, 3.2.3) at a domain of several labels (RFC 1035).
int addressError(const QString &address)
{
    static const QRegularExpression wellFormed(
        QRegularExpression::anchoredPattern(QString("ATOM(\\.ATOM)*@(LABEL\\.)+LABEL")
                                                .replace("ATOM", "[\\w!#$%&'*+/=?^`{|}~-]+")
                                                .replace("LABEL", "[A-Za-z\\d]([A-Za-z\\d-]{0,61}[A-Za-z\\d])?")));
    if (nameOf(address).size() > kMaxNameLength)
        return LOGIN_ERROR_NAME_TOO_LONG;
    if (address.size() > kMaxAddressLength || !wellFormed.match(address).hasMatch())
        return LOGIN_ERROR_MALFORMED_EMAIL;
    return 0;
}

QJsonObject newAccount(const QString &address, const QString &password)
{
    return {
        {"open_id", randomText(kOpenIdSize)}, {"nickname", nameOf(address)}, {"password", digestOfPassword(password)}};
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

QString addressOf(const QJsonObject &accounts, const QString &openId)
{
    for (auto account = accounts.begin(); account != accounts.end(); ++account)
        if (account.value().toObject().value("open_id").toString() == openId)
            return account.key();
    return {};
}

} // namespace

AccountService::LoginResult AccountService::login(const QString &user, const QString &password) const
{
    if (const int error = addressError(user))
        return {error};
    if (password.isEmpty())
        return {LOGIN_ERROR_WRONG_PASSWORD};

    const StoreLock lock(m_store.directory());
    std::optional<QJsonObject> accounts = m_store.accounts();
    std::optional<SessionState> state = m_store.session();
    if (!lock.isHeld() || !accounts || !state)
        return {LOGIN_ERROR_UNAVAILABLE};

    const QString address = user.toLower();
    QJsonObject account = accounts->value(address).toObject();
    const bool isNew = !accounts->contains(address);
    if (isNew) {
        account = newAccount(address, password);
        accounts->insert(address, account);
        if (!m_store.setAccounts(*accounts))
            return {LOGIN_ERROR_UNAVAILABLE};
    } else if (!isPassword(account.value("password").toObject(), password)) {
        return {LOGIN_ERROR_WRONG_PASSWORD};
    }
    state->session = newSession(address, account);
    return {m_store.setSession(*state) ? 0 : LOGIN_ERROR_UNAVAILABLE, isNew};
}

bool AccountService::logout() const
{
    std::optional<SessionState> state = m_store.session();
    if (state && !state->session)
        return true;
    const StoreLock lock(m_store.directory());
    state = m_store.session();
    if (!lock.isHeld() || !state)
        return false;
    state->session.reset();
    return m_store.setSession(*state);
}

int AccountService::closeAccount() const
{
    const StoreLock lock(m_store.directory());
    std::optional<QJsonObject> accounts = m_store.accounts();
    std::optional<SessionState> state = m_store.session();
    if (!lock.isHeld() || !accounts || !state)
        return LOGIN_ERROR_UNAVAILABLE;
    if (!state->session)
        return LOGIN_ERROR_NO_SUCH_ACCOUNT;

    const QString address = addressOf(*accounts, state->session->openId);
    if (!address.isEmpty()) {
        accounts->remove(address);
        if (!m_store.setAccounts(*accounts))
            return LOGIN_ERROR_UNAVAILABLE;
    }
    state->session.reset();
    ++state->closures;
    return m_store.setSession(*state) ? 0 : LOGIN_ERROR_UNAVAILABLE;
}

bool AccountService::adopt(Session session) const
{
    if (session.openId.isEmpty() || session.token.isEmpty())
        return false;
    const StoreLock lock(m_store.directory());
    std::optional<QJsonObject> accounts = m_store.accounts();
    std::optional<SessionState> state = m_store.session();
    if (!lock.isHeld() || !accounts || !state)
        return false;

    session.email = addressOf(*accounts, session.openId);
    if (!session.email.isEmpty()) {
        QJsonObject account = accounts->value(session.email).toObject();
        account.insert("nickname", session.nickname);
        account.insert("avatar", session.avatar);
        accounts->insert(session.email, account);
        if (!m_store.setAccounts(*accounts))
            return false;
    }
    session.registerFrom = session.email.isEmpty() ? 0 : kRegisteredByEmail;
    state->session = std::move(session);
    return m_store.setSession(*state);
}

} // namespace local_sdk
