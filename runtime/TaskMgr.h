#pragma once

#include "config/Export.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

/// A task of a TaskMgr. The application derives its own.
class ONDPDFTOOLUTILS_EXPORT ITask
{
public:
    virtual ~ITask();

    /// Performs the task, on the manager's worker thread. An exception that leaves it ends the process.
    virtual void run() = 0;

    /// The priority, 0 at first. It is offered to callers that sort; a TaskMgr does not heed it. Not synchronised.
    [[nodiscard]] int getPriority() const { return m_priority; }
    void setPriority(int priority) { m_priority = priority; }

    /// The order that has the higher priority first: whether `a` comes before `b`.
    bool operator()(ITask &a, ITask &b) const { return a.m_priority > b.m_priority; }

private:
    int m_priority = 0;
};

/// A worker thread of its own that runs tasks one at a time, in the order in which they were pushed.
///
/// Any thread may push, tasks included. WaitTaskFinish() ends the worker; there is no restart. It must have returned,
/// and other threads must be done with the manager, before the manager is destroyed: destroying one whose worker is
/// still joinable terminates the process. Tasks that were not run by then are released by the destructor.
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
    /// May be called again, from one thread at a time, and starts the time limit anew. A task that calls it for its own
    /// manager only stops the worker, which it cannot wait for: the owner still has to call it.
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
    using TaskList = std::list<std::shared_ptr<ITask>>;

    /// The tasks that wait. Emptied nodes of earlier batches are handed out again: to free memory that other threads
    /// allocated is what small tasks cost most.
    class Queue
    {
    public:
        /// Whether there are tasks. Needs no mutex; what follows needs the state mutex.
        [[nodiscard]] bool isFilled() const { return m_filled; }
        void append(std::shared_ptr<ITask> task);
        [[nodiscard]] TaskList takeAll();

        /// Takes the nodes of a batch of which nothing is left but empty pointers. For the worker; needs no mutex.
        void recycle(TaskList &&batch);

    private:
        TaskList m_tasks;
        TaskList m_spare;
        TaskList m_emptied;
        std::atomic<bool> m_filled{false};
    };

    /// A condition variable for one waiter that misses no signal, although those who signal hold no mutex. What the
    /// worker waits for must be told by atomic variables that are set, sequentially consistent, before the signal.
    class WakeCondition
    {
    public:
        template <typename Predicate> void wait(std::unique_lock<std::mutex> &lock, Predicate ready);
        void signal();

    private:
        QSemaphore m_signal;
        std::atomic<bool> m_waiting{false};
    };

    [[nodiscard]] bool hasWork() const { return m_stop || m_queue.isFilled(); }
    void WorkThread();
    void waitForWork();
    std::size_t ExcuteTasks();

    std::atomic<bool> m_stop{false};
    Queue m_queue;
    std::thread m_worker;
    WakeCondition m_wake;
    std::mutex m_waitMutex;
    mutable std::mutex m_stateMutex;
    QElapsedTimer m_stopTimer;
    quint32 m_timeLimit = 0;

protected:
    /// Has the worker run what is queued once more after it was told to stop, under the same time limit. A derived
    /// manager sets it before it requests the stop.
    bool m_drain = false;
};
