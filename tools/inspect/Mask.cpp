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

std::string quoted(const std::string &text)
{
    return std::regex_replace(text, std::regex(R"([.*+?^${}()|\[\]\\])"), R"(\$&)");
}

std::string userName()
{
    const passwd *user = ::getpwuid(::getuid());
    const char *name = user ? user->pw_name : std::getenv("USER");
    return name ? name : "";
}

} // namespace

Mask::Mask()
{
    // The home folder first: it is longer than the user's name, which it ends in.
    const std::string home = QDir::homePath().toStdString();
    if (home.size() > 1)
        m_rules.push_back({"home folder", std::regex(quoted(home) + R"((?=/|$|[^\w.-]))")});
    m_rules.push_back({"e-mail address", std::regex(R"([\w.+-]+@[\w-]+(\.[\w-]+)+)")});
    m_rules.push_back({"token",
                       std::regex(R"(((token|password|passwd|certificate|sign|key)["']?\s*[=:]\s*["']?)([^\s"'&]{4,}))",
                                  std::regex::icase)});
    m_rules.push_back(
        {"id", std::regex(R"(\b[0-9a-fA-F]{8}-[0-9a-fA-F]{4}-[0-9a-fA-F-]{18,}\b|\b[0-9a-fA-F]{24,}\b)")});
    const std::pair<const char *, std::string> names[] = {
        {"user name", userName()}, {"name of the machine", QSysInfo::machineHostName().toStdString()}};
    for (const auto &[kind, name] : names)
        if (name.size() > 1)
            m_rules.push_back({kind, std::regex("\\b" + quoted(name) + "\\b")});
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
    std::string result = text;
    for (const Rule &rule : m_rules) {
        std::string next;
        auto end = result.cbegin();
        for (std::sregex_iterator match(result.cbegin(), result.cend(), rule.pattern), none; match != none; ++match) {
            // What names a token stays; the token itself is the third group.
            const std::size_t group = rule.kind == "token" ? 3 : 0;
            next.append(end, (*match)[group].first);
            next += replacement(rule.kind, (*match)[group].str());
            end = (*match)[group].second;
        }
        result = next.append(end, result.cend());
    }
    return result;
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
        const bool isPrivate = kind != privateMembers().end() && member.value() != "" && member.value() != 0;
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
