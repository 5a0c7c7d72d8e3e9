#pragma once

#include "vipsdk/include/IUserInfoChangeListener.h"
#include "vipsdk/local/AccountService.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace local_sdk {

/// Tells listeners of changes of the session, whichever process made them, on a thread of its own and within a second.
/// Several changes at once are told once.
class SessionWatcher
{
public:
    explicit SessionWatcher(const AccountService &service) : m_service(service) { }
    ~SessionWatcher() { stop(); }
    SessionWatcher(const SessionWatcher &) = delete;
    SessionWatcher &operator=(const SessionWatcher &) = delete;

    /// Changes from now on are told.
    void start();
    /// Ends the thread, and waits for its end unless it is the caller.
    void stop();

    /// Has the thread look now. False when it does not run.
    bool lookNow();

    void add(vip_sdk::IUserInfoChangeListener *listener);
    /// Waits for a call in progress, unless it is made from that call.
    void remove(vip_sdk::IUserInfoChangeListener *listener);

private:
    using Notice = void (vip_sdk::IUserInfoChangeListener::*)();

    void run(SessionState known);
    [[nodiscard]] bool waitForNextLook();
    void compare(SessionState &known);
    void tell(Notice notice);

    const AccountService &m_service;

    std::mutex m_mutex; // guards what follows
    std::condition_variable m_wake;
    std::thread m_thread;
    bool m_stop = false;
    bool m_look = false;

    std::recursive_mutex m_listenerMutex; // held while listeners are called
    std::vector<vip_sdk::IUserInfoChangeListener *> m_listeners;
};

} // namespace local_sdk
