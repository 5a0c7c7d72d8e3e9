#include "tools/inspect/Mask.h"

#include <QDir>
#include <QSysInfo>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace inspect {

namespace {

/// Members whose whole text is about the user.
const std::map<std::string, std::string> &privateMembers()
{
    static const std::map<std::string, std::string> all = {
        {"open_id", "id"}, {"nickname", "name"}, {"avatar", "address"}, {"email", "e-mail address"},
        {"GetUUID", "id"}, {"GetSvrid", "id"},   {"GetIid", "id"},      {"uuid", "id"},
    };
    return all;
}

QString userName()
{
    const passwd *user = ::getpwuid(::getuid());
    const char *name = user ? user->pw_name : std::getenv("USER");
    return QString::fromUtf8(name);
}

} // namespace

Mask::Mask()
{
    const auto add = [this](const char *kind, const QString &pattern) {
        m_rules.push_back({kind, QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption)});
    };
    // The home folder first: it is longer than the user's name, which it ends in.
    const QString home = QDir::homePath();
    if (home.size() > 1)
        add("home folder", QRegularExpression::escape(home) + R"((?=/|$|[^\w.-]))");
    add("e-mail address", R"([\w.+-]+@[\w-]+(\.[\w-]+)+)");
    // What names a token stays.
    add("token", R"((?:token|password|passwd|certificate|sign|key)["']?\s*[=:]\s*["']?\K[^\s"'&]{4,})");
    add("id", R"(\b[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f-]{18,}\b|\b[0-9a-f]{24,}\b)");
    const std::pair<const char *, QString> names[] = {{"user name", userName()},
                                                      {"name of the machine", QSysInfo::machineHostName()}};
    for (const auto &[kind, name] : names)
        if (name.size() > 1)
            add(kind, "\\b" + QRegularExpression::escape(name) + "\\b");
}

std::string Mask::replacement(const std::string &kind, const std::string &text)
{
    auto &known = m_replacements[kind];
    const auto [place, isNew] = known.try_emplace(text);
    if (isNew)
        place->second = kind == "home folder" ? "~" : "<" + kind + ' ' + std::to_string(known.size()) + '>';
    return place->second;
}

std::string Mask::masked(const std::string &text)
{
    QString result = QString::fromStdString(text);
    for (const Rule &rule : m_rules) {
        QString next;
        int end = 0;
        for (auto matches = rule.pattern.globalMatch(result); matches.hasNext();) {
            const QRegularExpressionMatch match = matches.next();
            next += result.mid(end, match.capturedStart() - end);
            next += QString::fromStdString(replacement(rule.kind, match.captured().toStdString()));
            end = static_cast<int>(match.capturedEnd());
        }
        result = next + result.mid(end);
    }
    return result.toStdString();
}

Json Mask::masked(const Json &answers)
{
    if (answers.is_string())
        return masked(answers.get_ref<const std::string &>());
    if (answers.is_array()) {
        Json result = Json::array();
        for (const Json &value : answers)
            result.push_back(masked(value));
        return result;
    }
    if (!answers.is_object())
        return answers;
    Json result = Json::object();
    for (const auto &member : answers.items()) {
        const auto kind = privateMembers().find(member.key());
        const bool isPrivate = kind != privateMembers().end() && member.value() != Json("") && member.value() != 0;
        result[masked(member.key())] =
            isPrivate ? Json(replacement(kind->second, member.value().dump())) : masked(member.value());
    }
    return result;
}

Json Mask::counts() const
{
    Json counts = Json::object();
    for (const auto &[kind, texts] : m_replacements)
        counts[kind] = texts.size();
    return counts;
}

} // namespace inspect
