#include "vipsdk/local/FolderEvents.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace local_sdk {

// A descriptor that the system does not give is negative, which all calls below put up with.
struct FolderEvents::Private
{
    const int events = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    const int wake = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    int watched = -1;
};

FolderEvents::FolderEvents() : m_private(std::make_unique<Private>()) { }

FolderEvents::~FolderEvents()
{
    ::close(m_private->events);
    ::close(m_private->wake);
}

bool FolderEvents::watch(const std::string &path)
{
    constexpr unsigned mask = IN_CREATE | IN_DELETE | IN_MOVE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    const int watched = ::inotify_add_watch(m_private->events, path.c_str(), mask); // the same for the same folder
    if (m_private->watched >= 0 && m_private->watched != watched)
        ::inotify_rm_watch(m_private->events, m_private->watched);
    m_private->watched = watched;
    return watched >= 0;
}

bool FolderEvents::wait(std::chrono::milliseconds longest)
{
    pollfd ready[] = {{m_private->events, POLLIN, 0}, {m_private->wake, POLLIN, 0}};
    if (::poll(ready, 2, static_cast<int>(longest.count())) <= 0)
        return false;
    char ignored[4096];
    while (::read(m_private->wake, ignored, sizeof ignored) > 0) { }
    while (::read(m_private->events, ignored, sizeof ignored) > 0) { }
    return ready[0].revents != 0;
}

void FolderEvents::wake()
{
    ::eventfd_write(m_private->wake, 1);
}

} // namespace local_sdk
