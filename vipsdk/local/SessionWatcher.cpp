#include "vipsdk/local/SessionWatcher.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <future>
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

/// What a notice that does not return may cost the process at its end.
constexpr std::chrono::seconds kPatienceAtExit{2};

/// The watchers that were started and still exist. Services may never be destroyed, so that their threads have to end
/// at exit: what they tell of may be gone afterwards.
class Watchers
{
public:
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
    [[nodiscard]] std::set<SessionWatcher *> all()
    {
        const std::lock_guard lock(m_mutex);
        return m_watchers;
    }

private:
    std::mutex m_mutex;
    std::set<SessionWatcher *> m_watchers;
};

struct Exit
{
    ~Exit();
};

Watchers &watchers()
{
    static auto &watchers = *new Watchers; // what is destroyed later may stop its watcher
    static const Exit exit;
    return watchers;
}

Exit::~Exit()
{
    for (SessionWatcher *watcher : watchers().all())
        watcher->stop(kPatienceAtExit);
}

} // namespace

struct SessionWatcher::Running
{
    FolderEvents events;
    std::atomic<bool> isStopped{false};
    std::promise<void> ended;
    std::thread thread;
    const pid_t process = ::getpid();
};

SessionWatcher::SessionWatcher(const AccountService &service) : m_service(service) { }

SessionWatcher::~SessionWatcher()
{
    stop();
    watchers().erase(this);
}

void SessionWatcher::start()
{
    {
        const std::lock_guard lock(m_mutex);
        const bool isHere = m_running && m_running->process == ::getpid();
        if (isHere && m_running->thread.get_id() == std::this_thread::get_id())
            m_running->isStopped = false; // stopped and started again from a notice
        if (isHere && !m_running->isStopped)
            return;
    }
    stop();
    const std::lock_guard lock(m_mutex);
    if (m_running) // another thread was faster
        return;
    try {
        m_running = std::make_unique<Running>();
        m_running->thread = std::thread(
            [this](Running *running, const SessionState &known) {
                run(*running, known);
                running->ended.set_value();
            },
            m_running.get(), m_service.state().value_or(SessionState()));
        watchers().insert(this);
    } catch (const std::system_error &) { // the account works without notices too
        m_running.reset();
    }
}

void SessionWatcher::stop(std::optional<std::chrono::seconds> patience)
{
    std::unique_ptr<Running> ending;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_running)
            return;
        if (m_running->process != ::getpid()) {
            // A fork leaves threads behind, so that this one cannot be waited for.
            static_cast<void>(m_running.release()); // NOLINT(bugprone-unused-return-value)
            return;
        }
        m_running->isStopped = true;
        m_running->events.wake();
        if (m_running->thread.get_id() == std::this_thread::get_id())
            return;
        ending = std::move(m_running);
    }
    if (patience && ending->ended.get_future().wait_for(*patience) != std::future_status::ready) {
        ending->thread.detach();
        static_cast<void>(ending.release()); // NOLINT(bugprone-unused-return-value): the thread's
        return;
    }
    ending->thread.join();
}

bool SessionWatcher::lookNow()
{
    const std::lock_guard lock(m_mutex);
    if (!m_running || m_running->process != ::getpid() || m_running->isStopped)
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

void SessionWatcher::run(Running &running, SessionState known)
{
    while (!running.isStopped) {
        const bool isWatched = watchStore(running.events); // before the look, so that no change falls between the two
        compare(known);
        if (running.events.wait(isWatched ? kSafetyInterval : kInterval))
            std::this_thread::sleep_for(kSettleTime);
    }
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
