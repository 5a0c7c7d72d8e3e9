#include "paths/RegularFile_p.h"
#include "tools/inspect/Account.h"
#include "tools/inspect/Checks.h"

#ifdef OND_LOCAL_VIPSDK
#include "vipsdk/local/DataDirectory.h"
#endif

#include <sys/stat.h>
#include <unistd.h>

namespace inspect {

#ifdef OND_LOCAL_VIPSDK

namespace {

constexpr int kMaxSize = 16 << 20;

/// Whether it belongs to this user, and `bits` of its permissions are not set.
void checkOwner(const std::string &path, mode_t bits, Checklist &list)
{
    struct stat status
    {
    };
    if (::stat(path.c_str(), &status) != 0)
        return;
    if (status.st_uid != ::geteuid())
        list.problem({"belongs to another user", "Nobody can log in.", "Move it away: a new one is made.", path});
    else if ((status.st_mode & bits) != 0)
        list.problem({"open to other users of the machine", "They could read or replace accounts.",
                      "Take the permissions of others away: chmod go-rwx.", path});
}

} // namespace

void checkAccountStore(Checklist &list)
{
    list.begin("account-store", "Accounts on this machine");
    const std::string folder = local_sdk::dataDirectory();
    if (typeOf(folder) == std::filesystem::file_type::not_found)
        return;
    if (typeOf(folder) != std::filesystem::file_type::directory)
        return list.problem({"no folder", "Nobody can log in.", "Move it away.", folder});
    checkOwner(folder, S_IWGRP | S_IWOTH, list);
    for (const char *name : {"accounts.json", "session.json"}) {
        const std::string path = folder + '/' + name;
        const FileContent file = readRegularFile(path, kMaxSize);
        if (file.state == FileContent::State::missing)
            continue;
        checkOwner(path, S_IRWXG | S_IRWXO, list);
        if (!file.isRead() || !Json::parse(file.bytes.begin(), file.bytes.end(), nullptr, false).is_object())
            list.problem({file.isRead() ? "malformed" : "no readable file", "Nobody can log in.",
                          "Move it away: a new one is made, without the accounts in it.", path});
    }
}

#else

void checkAccountStore(Checklist & /*list*/) { }

#endif

} // namespace inspect
