#include "vipsdk/local/Store.h"

#include "vipsdk/local/DataDirectory.h"
#include "vipsdk/local/File.h"

#include <QJsonDocument>
#include <QUuid>

namespace local_sdk {

namespace {

constexpr int kFormat = 1;

enum class Content { ok, missing, malformed, unusable };

std::string accountsPath(const std::string &directory)
{
    return directory + "/accounts.json";
}

std::string sessionPath(const std::string &directory)
{
    return directory + "/session.json";
}

Content readObject(const std::string &directory, const std::string &path, QJsonObject &object)
{
    QByteArray bytes;
    const ReadResult result = readFile(path, bytes);
    if (result == ReadResult::missing)
        return Content::missing;
    if (result == ReadResult::failed || !isTrustedDirectory(directory))
        return Content::unusable;
    object = QJsonDocument::fromJson(bytes).object();
    if (!object.contains("format"))
        return Content::malformed;
    return object.value("format") == kFormat ? Content::ok : Content::unusable;
}

NamedContent fileOf(const std::string &path, QJsonObject object)
{
    object.insert("format", kFormat);
    return {path, QJsonDocument(object).toJson()};
}

QJsonObject toJson(const Session &session)
{
    return {{"open_id", session.openId}, {"token", session.token}, {"nickname", session.nickname},
            {"avatar", session.avatar},  {"email", session.email}, {"register_from", session.registerFrom}};
}

std::optional<Session> toSession(const QJsonObject &object)
{
    // Half a character, which a file may hold, would make other readers of the user's information refuse all of it.
    const auto text = [&object](const char *key) { return QString::fromUtf8(object.value(key).toString().toUtf8()); };
    Session session{text("open_id"), text("token"), text("nickname"),
                    text("avatar"),  text("email"), object.value("register_from").toInt()};
    if (session.openId.isEmpty() || session.token.isEmpty())
        return std::nullopt;
    return session;
}

} // namespace

Store::Store(std::string directory) : m_directory(std::move(directory)) { }

std::optional<QJsonObject> Store::accounts() const
{
    QJsonObject object;
    switch (readObject(m_directory, accountsPath(m_directory), object)) {
    case Content::ok:
        return object.value("accounts").toObject();
    case Content::missing:
        return QJsonObject();
    default:
        return std::nullopt;
    }
}

std::optional<SessionState> Store::session() const
{
    QJsonObject object;
    if (readObject(m_directory, sessionPath(m_directory), object) == Content::unusable)
        return std::nullopt;
    return SessionState{object.value("change").toString(), object.value("closures").toInt(),
                        toSession(object.value("session").toObject())};
}

bool Store::set(const SessionState &state, const std::optional<QJsonObject> &accounts) const
{
    std::vector<NamedContent> files;
    if (accounts)
        files.push_back(fileOf(accountsPath(m_directory), {{"accounts", *accounts}}));
    QJsonObject object{{"change", QUuid::createUuid().toString(QUuid::WithoutBraces)}, {"closures", state.closures}};
    if (state.session)
        object.insert("session", toJson(*state.session));
    files.push_back(fileOf(sessionPath(m_directory), object));
    return replaceFiles(files);
}

bool Store::removeSession() const
{
    return removeFile(sessionPath(m_directory));
}

} // namespace local_sdk
