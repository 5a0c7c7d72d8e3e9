#include "paths/platform/UserDirectories_p.h"

#include <cerrno>
#include <pwd.h>
#include <unistd.h>
#include <vector>

// POSIX gives this answer in the same way everywhere, so that both platforms share it.
namespace platform {

std::string homeDirectoryOfUser()
{
    constexpr std::size_t maxSize = 1U << 20;
    passwd entry{};
    passwd *found = nullptr;
    std::vector<char> buffer(1024);
    while (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE && buffer.size() < maxSize)
        buffer.resize(buffer.size() * 2);
    return found && found->pw_dir ? found->pw_dir : "";
}

} // namespace platform
