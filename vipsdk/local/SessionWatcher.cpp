#include "vipsdk/local/SessionWatcher.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace local_sdk {

namespace {

/// For what the system does not tell, such as a change on another machine.
constexpr std::chrono::seconds kSafetyInterval{15};
/// Where the system tells nothing at all.
constexpr std::chrono::milliseconds kInterval{300};
/// A change of the store is several events, and a folder above it may be a busy one. One look is for all of them.
constexpr std::chrono::milliseconds kSettleTime{20};

/// The watchers that run. Services are never destroyed, so that their threads must end before the process does.
class RunningWatchers
{
public:
    ~RunningWatchers()
    {
        for (SessionWatcher *watcher : all())
            watcher->stop();
    }
    void insert(SessionWatcher *watcher)
    {
        const std::lock_guard lock(m_mutex);
        m_watchers.insert(watcher);
    }
    void erase(SessionWatcher *watcher)
    {
        const std::lock_guard lock(m_mutex);
        m_watchers.erase(watcher);
    }

private:
    std::set<SessionWatcher *> all()
    {
        const std::lock_guard lock(m_mutex);
        return m_watchers;
    }

    std::mutex m_mutex;
    std::set<SessionWatcher *> m_watchers;
};

RunningWatchers &runningWatchers()
{
    static RunningWatchers watchers;
    return watchers;
}

} // namespace

struct SessionWatcher::Running
{
    FolderEvents events;
    std::thread thread;
    const pid_t process = ::getpid();
};

SessionWatcher::SessionWatcher(const AccountService &service) : m_service(service) { }

SessionWatcher::~SessionWatcher()
{
    stop();
}

void SessionWatcher::start()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_running && m_running->process == ::getpid() && !m_stop)
            return;
    }
    stop();
    const std::lock_guard lock(m_mutex);
    m_stop = false;
    if (m_running) // stopped and started again from a notice
        return;
    try {
        m_running = std::make_unique<Running>();
        m_running->thread = std::thread(&SessionWatcher::run, this, std::ref(m_running->events),
                                        m_service.state().value_or(SessionState()));
        runningWatchers().insert(this);
    } catch (const std::system_error &) { // the account works without notices too
        m_running.reset();
    }
}

void SessionWatcher::stop()
{
    std::unique_ptr<Running> ending;
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
        if (!m_running)
            return;
        if (m_running->process != ::getpid()) {
            // A fork leaves threads behind, so that this one cannot be waited for.
            static_cast<void>(m_running.release()); // NOLINT(bugprone-unused-return-value)
            return;
        }
        m_running->events.wake();
        if (m_running->thread.get_id() == std::this_thread::get_id())
            return;
        ending = std::move(m_running);
    }
    ending->thread.join();
    runningWatchers().erase(this);
}

bool SessionWatcher::lookNow()
{
    const std::lock_guard lock(m_mutex);
    if (!m_running || m_running->process != ::getpid() || m_stop)
        return false;
    m_running->events.wake();
    return true;
}

void SessionWatcher::add(vip_sdk::IUserInfoChangeListener *listener)
{
    const std::lock_guard lock(m_listenerMutex);
    if (listener && std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end())
        m_listeners.push_back(listener);
}

void SessionWatcher::remove(vip_sdk::IUserInfoChangeListener *listener)
{
    const std::lock_guard lock(m_listenerMutex);
    m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), listener), m_listeners.end());
}

void SessionWatcher::run(FolderEvents &events, SessionState known)
{
    while (!isStopped()) {
        const bool isWatched = watchStore(events); // before the look, so that no change falls between the two
        compare(known);
        if (events.wait(isWatched ? kSafetyInterval : kInterval))
            std::this_thread::sleep_for(kSettleTime);
    }
}

bool SessionWatcher::isStopped()
{
    const std::lock_guard lock(m_mutex);
    return m_stop;
}

/// Watches the store's folder, or the nearest one above it that there is; false when its events cannot be had.
bool SessionWatcher::watchStore(FolderEvents &events) const
{
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path folder = m_service.directory(), missing;
    for (; !fs::is_directory(folder, error) && folder.has_relative_path(); folder = folder.parent_path())
        missing = folder;
    return events.watch(folder) && (missing.empty() || !fs::exists(fs::symlink_status(missing, error)));
}

void SessionWatcher::compare(SessionState &known)
{
    const std::optional<SessionState> state = m_service.state();
    if (!state || state->change == known.change)
        return;
    const bool closed = state->closures > known.closures;
    known = *state;
    if (closed)
        tell(&vip_sdk::IUserInfoChangeListener::OnLogoutForeverUserInfoChange);
    if (!closed || state->session)
        tell(&vip_sdk::IUserInfoChangeListener::OnUserInfoChange);
}

void SessionWatcher::tell(Notice notice)
{
    const std::lock_guard lock(m_listenerMutex);
    for (vip_sdk::IUserInfoChangeListener *listener : std::vector(m_listeners))
        if (std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end()) // not removed meanwhile
            (listener->*notice)();
}

} // namespace local_sdk
