#include "vipsdk/local/SessionWatcher.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace local_sdk {

namespace {

constexpr std::chrono::milliseconds kInterval{300};

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

void SessionWatcher::start()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_thread.joinable() && !m_stop)
            return;
    }
    stop();
    const std::lock_guard lock(m_mutex);
    m_stop = false;
    if (m_thread.joinable()) // stopped and started again from a notice
        return;
    try {
        m_thread = std::thread(&SessionWatcher::run, this, m_service.state().value_or(SessionState()));
        runningWatchers().insert(this);
    } catch (const std::system_error &) { // NOLINT(bugprone-empty-catch): the account works without notices too
    }
}

void SessionWatcher::stop()
{
    std::thread ending;
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
        if (m_thread.get_id() != std::this_thread::get_id())
            ending = std::move(m_thread);
    }
    m_wake.notify_all();
    if (!ending.joinable())
        return;
    ending.join();
    runningWatchers().erase(this);
}

bool SessionWatcher::lookNow()
{
    const std::lock_guard lock(m_mutex);
    m_look = true;
    m_wake.notify_all();
    return m_thread.joinable() && !m_stop;
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

void SessionWatcher::run(SessionState known)
{
    while (waitForNextLook())
        compare(known);
}

bool SessionWatcher::waitForNextLook()
{
    std::unique_lock lock(m_mutex);
    m_wake.wait_for(lock, kInterval, [this] { return m_stop || m_look; });
    m_look = false;
    return !m_stop;
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
