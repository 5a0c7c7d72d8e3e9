#include "paths/GroupContainer_p.h"

#include "paths/StringUtils.h"
#include "paths/platform/UserDirectories_p.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>
#include <vector>

namespace {

std::string fromEnvironment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

/// The first two folders of a path: the users folder and the user's own.
std::string firstTwoFolders(const std::string &path)
{
    std::vector<std::string> parts;
    StringSplit(path, parts, "/");
    parts.erase(std::remove(parts.begin(), parts.end(), std::string()), parts.end());
    return parts.size() < 2 ? std::string() : "/" + parts[0] + "/" + parts[1];
}

std::string findHomePath()
{
    std::string home = platform::homeDirectoryOfUser();
    if (home.empty())
        home = firstTwoFolders(fromEnvironment("HOME"));
    return home.empty() ? "/Users/" + fromEnvironment("USER") : home;
}

} // namespace

std::string homePath()
{
    static const std::string &home = *new std::string(findHomePath());
    return home;
}

std::string groupContainer(const std::string &group)
{
    static std::mutex mutex;
    static auto &containers = *new std::map<std::string, std::string>;

    const std::lock_guard<std::mutex> lock(mutex);
    const auto known = containers.find(group);
    if (known != containers.end())
        return known->second;

    std::string path = platform::groupContainer(group);
    if (path.empty())
        path = homePath() + "/Library/Group Containers/" + group;
    return containers.emplace(group, path).first->second;
}
