#include "vipsdk/local/FolderEvents.h"

#include <fcntl.h>
#include <sys/event.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace local_sdk {

namespace {

constexpr uintptr_t kWake = 0;

bool change(int queue, uintptr_t identifier, int filter, int flags, unsigned what)
{
    struct kevent event;
    EV_SET(&event, identifier, filter, flags, what, 0, nullptr);
    return ::kevent(queue, &event, 1, nullptr, 0, nullptr) == 0;
}

bool isSameFolder(int a, int b)
{
    struct stat first, second;
    return ::fstat(a, &first) == 0 && ::fstat(b, &second) == 0 && first.st_dev == second.st_dev
        && first.st_ino == second.st_ino;
}

} // namespace

// A descriptor that the system does not give is negative, which all calls below put up with.
struct FolderEvents::Private
{
    const int queue = ::kqueue();
    int watched = -1;
};

FolderEvents::FolderEvents() : m_private(std::make_unique<Private>())
{
    ::fcntl(m_private->queue, F_SETFD, FD_CLOEXEC);
    change(m_private->queue, kWake, EVFILT_USER, EV_ADD | EV_CLEAR, 0);
}

FolderEvents::~FolderEvents()
{
    ::close(m_private->watched);
    ::close(m_private->queue);
}

bool FolderEvents::watch(const std::string &path)
{
    const int folder = ::open(path.c_str(), O_EVTONLY | O_DIRECTORY | O_CLOEXEC);
    if (isSameFolder(folder, m_private->watched)) {
        ::close(folder);
        return true;
    }
    ::close(m_private->watched); // and its events with it
    m_private->watched = -1;
    if (folder < 0)
        return false;
    if (!change(m_private->queue, static_cast<uintptr_t>(folder), EVFILT_VNODE, EV_ADD | EV_CLEAR,
                NOTE_WRITE | NOTE_EXTEND | NOTE_DELETE | NOTE_RENAME)) {
        ::close(folder);
        return false;
    }
    m_private->watched = folder;
    return true;
}

bool FolderEvents::wait(std::chrono::milliseconds longest)
{
    if (m_private->queue < 0) {
        std::this_thread::sleep_for(longest);
        return false;
    }
    const timespec timeout{static_cast<time_t>(longest.count() / 1000),
                           static_cast<long>(longest.count() % 1000) * 1'000'000};
    struct kevent events[2];
    const int count = ::kevent(m_private->queue, nullptr, 0, events, 2, &timeout);
    bool isChange = false;
    for (int i = 0; i < count; ++i)
        isChange = isChange || events[i].filter == EVFILT_VNODE;
    return isChange;
}

void FolderEvents::wake()
{
    change(m_private->queue, kWake, EVFILT_USER, 0, NOTE_TRIGGER);
}

} // namespace local_sdk
