#pragma once

#include "config/Export.h"
#include "runtime/QTTaskManager.h"

#include <QMutex>
#include <QString>

/// Told how a request ended. Implemented by dialogs, which override what they need.
class ONDPDFTOOLUTILS_EXPORT IRequestTaskCallBack
{
public:
    /// A login ended; on failure `code` is the service's, a vip_sdk::LoginError. `flag` is whether the login created
    /// the account.
    ///
    /// Called on the thread of the requests, so it must not touch widgets, and with the manager's mutex held: it must
    /// not call setLoginCallBack() or clearLoginCallBack(), nor wait for a thread that does. Everything else of the
    /// manager it may call, but unInit() then takes its whole second, for what it waits for is its caller.
    virtual void onLoginFinish(bool success, int code, bool flag);

protected:
    ~IRequestTaskCallBack() = default;
};

/// Runs slow account requests one after the other, in the order of their submission, on a thread of their own.
///
/// One object per process. Callable from any thread.
class ONDPDFTOOLUTILS_EXPORT GlobalRequestTaskMgr
{
public:
    /// The process's only instance, made by the first call. Every call also does init(). At exit it does unInit() and
    /// takes no more requests, and the callback is forgotten; a callback that does not return does not keep the process
    /// from ending.
    static GlobalRequestTaskMgr *getInstance();

    GlobalRequestTaskMgr(const GlobalRequestTaskMgr &) = delete;
    GlobalRequestTaskMgr &operator=(const GlobalRequestTaskMgr &) = delete;

    /// Makes the pool of one thread, unless there is one. True, but at exit.
    bool init();
    /// Drops the requests that have not started. False without a pool.
    bool stop();
    /// Waits for all requests, also for those that come in meanwhile, but at most a second. Then drops those that have
    /// not started and gives up the pool: the event loop of the thread that called init() deletes it, which waits for a
    /// request that still runs. False without a pool.
    bool unInit();

    /// Who is told how logins end, in place of whoever was; null for nobody. Waits for a delivery in progress: the old
    /// one is not called any more. Not owned, and to be cleared before it is destroyed.
    void setLoginCallBack(IRequestTaskCallBack *callback);
    /// Tells nobody any more if that would be `callback`, and leaves others alone. Waits for a delivery in progress.
    void clearLoginCallBack(const IRequestTaskCallBack *callback);
    /// Queues a login and returns at once. The result goes to whoever is registered when the service has answered.
    /// False, with nothing queued, without a pool.
    bool requestLogin(QString user, QString password);

    /// The request itself: logs in through the account's SDK, which blocks, and delivers the result.
    void login(QString user, QString password);

private:
    GlobalRequestTaskMgr();
    ~GlobalRequestTaskMgr() = default;

    static GlobalRequestTaskMgr &instance();
    void waitForRequests();
    void end();

    QMutex m_mutex; // held while the callback is called, which may take the others
    QTTaskManager m_tasks;
    IRequestTaskCallBack *m_loginCallBack = nullptr;
    QMutex m_unInitMutex; // taken before m_poolMutex
    QMutex m_poolMutex; // guards m_tasks and m_ended
    bool m_ended = false;
};
