#pragma once

#include "vipsdk/include/IUserInfoChangeListener.h"
#include "vipsdk/local/AccountService.h"
#include "vipsdk/local/FolderEvents.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace local_sdk {

/// Tells listeners of changes of the session, whichever process made them, on a thread of its own as soon as the
/// system tells of them. Several changes at once are told once. A process that was forked has no such thread until it
/// starts one.
class SessionWatcher
{
public:
    explicit SessionWatcher(const AccountService &service);
    ~SessionWatcher();
    SessionWatcher(const SessionWatcher &) = delete;
    SessionWatcher &operator=(const SessionWatcher &) = delete;

    /// Changes from now on are told. Callable, like stop(), from any thread.
    void start();
    /// Ends the thread, and waits for its end unless it is the caller. A thread that takes longer than `patience`,
    /// because a listener does not return, is left alone, and this object must outlive it: that is for exit, at which
    /// every watcher is stopped.
    void stop(std::optional<std::chrono::seconds> patience = {});

    /// Has the thread look now. False when it does not run.
    bool lookNow();

    void add(vip_sdk::IUserInfoChangeListener *listener);
    /// Waits for a call in progress, unless it is made from that call.
    void remove(vip_sdk::IUserInfoChangeListener *listener);

private:
    using Notice = void (vip_sdk::IUserInfoChangeListener::*)();

    struct Running;

    void run(Running &running, SessionState known);
    [[nodiscard]] bool watchStore(FolderEvents &events) const;
    void compare(SessionState &known);
    void tell(Notice notice);

    const AccountService &m_service;

    std::mutex m_mutex; // guards what follows
    std::unique_ptr<Running> m_running;

    std::recursive_mutex m_listenerMutex; // held while listeners are called
    std::vector<vip_sdk::IUserInfoChangeListener *> m_listeners;
};

} // namespace local_sdk
