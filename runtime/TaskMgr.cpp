#include "runtime/TaskMgr.h"

#include <chrono>
#include <exception>

namespace {

/// Nodes of either list that are kept for tasks to come: below a megabyte.
constexpr std::size_t kMaxSpareNodes = 16384;
/// Tasks in one batch that make it part of a burst.
constexpr std::size_t kBurst = 16;
/// How long the tasks of a burst gather; systems make more of it, some tens of microseconds.
constexpr std::chrono::microseconds kGatherTime{5};

} // namespace

ITask::~ITask() = default;

void TaskMgr::Queue::append(std::shared_ptr<ITask> task)
{
    if (m_spare.empty()) {
        m_tasks.push_back(std::move(task));
    } else {
        m_spare.front() = std::move(task);
        m_tasks.splice(m_tasks.end(), m_spare, m_spare.begin());
    }
    if (!m_filled.load(std::memory_order_relaxed))
        m_filled = true;
}

TaskMgr::TaskList TaskMgr::Queue::takeAll()
{
    TaskList batch;
    batch.swap(m_tasks);
    if (m_spare.size() < kMaxSpareNodes)
        m_spare.splice(m_spare.end(), m_emptied);
    m_filled.store(false, std::memory_order_relaxed);
    return batch;
}

void TaskMgr::Queue::recycle(TaskList &&batch)
{
    const std::size_t room = kMaxSpareNodes - m_emptied.size();
    if (batch.size() > room)
        batch.resize(room);
    m_emptied.splice(m_emptied.end(), batch);
}

// Who signals has changed what the worker waits for, then asks whether it waits; the worker says that it waits, then
// asks what it waits for. In the one order of these four that all threads agree on, one of the two sees the other, and
// the semaphore remembers the signal for a worker that is only about to sleep.
template <typename Predicate> void TaskMgr::WakeCondition::wait(std::unique_lock<std::mutex> &lock, Predicate ready)
{
    while (!ready()) {
        m_waiting = true;
        if (ready() && m_waiting.exchange(false))
            return;
        lock.unlock();
        m_signal.acquire();
        lock.lock();
    }
}

void TaskMgr::WakeCondition::signal()
{
    if (m_waiting && m_waiting.exchange(false))
        m_signal.release();
}

TaskMgr::TaskMgr()
{
    m_worker = std::thread(&TaskMgr::WorkThread, this);
}

TaskMgr::~TaskMgr()
{
    // The thread object would do the same, but only after the condition is gone that its worker waits on.
    if (m_worker.joinable())
        std::terminate();
}

void TaskMgr::PushTask(std::shared_ptr<ITask> task)
{
    if (!task)
        return;
    {
        const std::lock_guard lock(m_stateMutex);
        m_queue.append(std::move(task));
    }
    m_wake.signal();
}

void TaskMgr::WaitTaskFinish(unsigned int milliseconds)
{
    {
        const std::lock_guard lock(m_stateMutex);
        m_stop = true;
        m_stopTimer.start();
        m_timeLimit = milliseconds;
    }
    m_wake.signal();
    if (m_worker.joinable() && m_worker.get_id() != std::this_thread::get_id())
        m_worker.join();
}

void TaskMgr::TrigerWorkEvent()
{
    m_wake.signal();
}

bool TaskMgr::isStop() const
{
    const std::lock_guard lock(m_stateMutex);
    return m_stop;
}

bool TaskMgr::isWaitTimeOut() const
{
    const std::lock_guard lock(m_stateMutex);
    return m_stop && m_stopTimer.hasExpired(m_timeLimit);
}

bool TaskMgr::IsWorking() const
{
    return true;
}

void TaskMgr::WorkThread()
{
    for (;;) {
        waitForWork();
        if (isStop())
            break;
        // Amid a burst, sleeping and being woken for every few tasks, and contending for the mutex with those who push,
        // costs many times what small tasks do.
        if (ExcuteTasks() >= kBurst && !isStop())
            std::this_thread::sleep_for(kGatherTime);
    }
    if (m_drain)
        ExcuteTasks();
}

void TaskMgr::waitForWork()
{
    std::unique_lock lock(m_waitMutex);
    m_wake.wait(lock, [this] { return hasWork(); });
}

/// Returns how many tasks the batch had.
std::size_t TaskMgr::ExcuteTasks()
{
    TaskList batch;
    {
        const std::lock_guard lock(m_stateMutex);
        batch = m_queue.takeAll();
    }
    auto next = batch.begin();
    // The flag is never taken back, so that the mutex is needed only once it is set.
    while (next != batch.end() && !(m_stop && isWaitTimeOut())) {
        const std::shared_ptr<ITask> task = std::move(*next++);
        task->run();
    }
    batch.erase(next, batch.end());
    const std::size_t count = batch.size();
    m_queue.recycle(std::move(batch));
    return count;
}
