#pragma once

#include "config/Export.h"
#include "runtime/QTTaskManager.h"

#include <QString>
#include <memory>

/// Told how a request ended. Implemented by dialogs, which override what they need.
class ONDPDFTOOLUTILS_EXPORT IRequestTaskCallBack
{
public:
    /// A login ended; on failure `code` is the service's, a vip_sdk::LoginError. `flag` is whether the login created
    /// the account. Called on the thread of the requests, which must not touch widgets, with the manager's mutex held:
    /// setLoginCallBack() must not be called from inside.
    virtual void onLoginFinish(bool success, int code, bool flag);

protected:
    ~IRequestTaskCallBack() = default;
};

/// Runs slow account requests one after the other, in the order of their submission, on a thread of their own.
///
/// One object per process, controlled from one thread.
class ONDPDFTOOLUTILS_EXPORT GlobalRequestTaskMgr
{
public:
    /// The process's only instance, made by the first call and destroyed at exit, which does unInit() and tells nobody
    /// of a request that still runs. Every call also does init().
    static GlobalRequestTaskMgr *getInstance();

    GlobalRequestTaskMgr(const GlobalRequestTaskMgr &) = delete;
    GlobalRequestTaskMgr &operator=(const GlobalRequestTaskMgr &) = delete;

    /// Makes the pool of one thread, unless there is one. True.
    bool init();
    /// Drops the requests that have not started. False without a pool.
    bool stop();
    /// Waits for all requests, at most a second, then drops those that have not started and gives up the pool. The
    /// thread's event loop deletes it, which waits for a request that still runs. False without a pool.
    bool unInit();

    /// Who is told how logins end, in place of whoever was; null for nobody. Waits for a delivery in progress: the old
    /// one is not called any more. Not owned, and to be cleared before it is destroyed.
    void setLoginCallBack(IRequestTaskCallBack *callback);
    /// Queues a login and returns at once. The result goes to whoever is registered when the service has answered.
    /// False, with nothing queued, without a pool.
    bool requestLogin(QString user, QString password);

    /// The request itself: logs in through the account's SDK, which blocks, and delivers the result.
    void login(QString user, QString password);

private:
    class Logins;
    class Request;
    class Requests;

    GlobalRequestTaskMgr();
    ~GlobalRequestTaskMgr();

    bool dropWaiting();

    QTTaskManager m_tasks;
    std::shared_ptr<Logins> m_logins; // shared with the requests, one of which may outlive this object
    std::shared_ptr<Requests> m_requests; // those of the pool in use
};
