#pragma once

#include "config/Export.h"

#include <QElapsedTimer>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// A task of a TaskMgr. The application derives its own.
class ONDPDFTOOLUTILS_EXPORT ITask
{
public:
    virtual ~ITask();

    /// Performs the task, on the manager's worker thread. An exception that leaves it ends the process.
    virtual void run() = 0;

    ///@{

    /// The priority, 0 at first. It is offered to callers that sort; a TaskMgr does not heed it. Not synchronised.
    [[nodiscard]] int getPriority() const { return m_priority; }
    void setPriority(int priority) { m_priority = priority; }
    ///@}

    /// The order that has the higher priority first: whether `a` comes before `b`.
    bool operator()(ITask &a, ITask &b) const { return a.m_priority > b.m_priority; }

private:
    int m_priority = 0;
};

// Users may compile with this warning. Why the destructor is not virtual stands at the class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// A worker thread of its own that runs tasks one at a time, in the order in which they were pushed.
///
/// Any thread may push, tasks included. WaitTaskFinish() ends the worker; there is no restart. It must have returned,
/// and other threads must be done with the manager, before the manager is destroyed: destroying one whose worker is
/// still joinable terminates the process. Tasks that were not run by then are released by the destructor.
///
/// The table of virtual functions is part of the interface: PushTask, then WaitTaskFinish, and no destructor. A derived
/// manager must therefore not be deleted through a pointer to TaskMgr. Make a manager of either kind a local variable,
/// a member, or a std::shared_ptr by std::make_shared, which remembers what it holds: that is safe, and compilers do
/// not warn. Declare the derived class `final`. GCC with -Wnon-virtual-dtor names it nevertheless: there, put the
/// pragmas of this header around it.
class ONDPDFTOOLUTILS_EXPORT TaskMgr
{
public:
    /// Starts the worker. Throws std::system_error when the system has no thread left.
    TaskMgr();
    ~TaskMgr();

    TaskMgr(const TaskMgr &) = delete;
    TaskMgr &operator=(const TaskMgr &) = delete;

    /// Appends a task and wakes the worker. An empty pointer is ignored.
    virtual void PushTask(std::shared_ptr<ITask> task);

    /// Tells the worker to stop and waits for its end. The task that runs is finished; the tasks that the worker took
    /// up together with it go on to be run until `milliseconds` have passed, and the rest are released unrun. Tasks
    /// that it has not taken up yet are left to the destructor, unless the drain flag is set.
    ///
    /// May be called again, from one thread at a time; each call starts the time limit anew. A task that calls it for
    /// its own manager only requests the stop, without waiting: the owner must still call it.
    virtual void WaitTaskFinish(unsigned int milliseconds);

    /// Wakes the worker without adding anything.
    void TrigerWorkEvent();

    /// Whether a stop was requested.
    [[nodiscard]] bool isStop() const;
    /// Whether more than the time limit has passed since a stop was requested; false without one.
    [[nodiscard]] bool isWaitTimeOut() const;
    /// Always true.
    [[nodiscard]] bool IsWorking() const;

private:
    void WorkThread();
    void ExcuteTasks();

    std::atomic<bool> m_stop{false};
    std::vector<std::shared_ptr<ITask>> m_tasks;
    std::thread m_worker;
    std::condition_variable m_wake;
    mutable std::mutex m_mutex;
    QElapsedTimer m_stopTimer;
    quint32 m_timeLimit = 0;

protected:
    /// If set, the worker runs what is queued once more after it was told to stop, under the same time limit. A derived
    /// manager sets it before it requests the stop.
    bool m_drain = false;
};

#pragma GCC diagnostic pop
