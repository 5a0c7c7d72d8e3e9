#include "paths/RegularFile_p.h"

#include <QScopeGuard>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using State = FileContent::State;

State whyNotOpened(int error)
{
    if (error == ENOENT || error == ENOTDIR)
        return State::missing;
    return error == ENXIO ? State::irregular : State::unreadable; // a socket, or a device that is not there
}

} // namespace

FileContent readRegularFile(const std::string &path, int limit)
{
    if (path.find('\0') != std::string::npos)
        return {State::missing, {}};
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return {whyNotOpened(errno), {}};
    const auto closed = qScopeGuard([descriptor] { ::close(descriptor); });

    struct stat status;
    if (::fstat(descriptor, &status) != 0)
        return {State::unreadable, {}};
    if (!S_ISREG(status.st_mode))
        return {State::irregular, {}};
    if (status.st_size > limit)
        return {State::tooLarge, {}};

    // Not as many as that size says: the file may grow, and has none where the system makes it up.
    FileContent content{State::read, {}};
    content.bytes.reserve(static_cast<int>(status.st_size));
    char part[16 * 1024];
    ssize_t size = 0;
    while ((size = ::read(descriptor, part, sizeof part)) > 0) {
        if (size > limit - content.bytes.size())
            return {State::tooLarge, {}};
        content.bytes.append(part, static_cast<int>(size));
        if (content.bytes.size() == status.st_size && size < static_cast<ssize_t>(sizeof part))
            return content; // the end, for which more room was left
    }
    return size < 0 ? FileContent{State::unreadable, {}} : content;
}
