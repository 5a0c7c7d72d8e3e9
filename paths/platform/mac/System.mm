#include "paths/platform/System_p.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace platform {

std::uint64_t sharedMemorySize()
{
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(::popen("sysctl -n kern.sysv.shmmax", "r"), &::pclose);
    std::string output;
    std::array<char, 128> chunk{};
    while (pipe && std::fgets(chunk.data(), chunk.size(), pipe.get()))
        output += chunk.data();
    return std::strtoull(output.c_str(), nullptr, 10);
}

} // namespace platform
