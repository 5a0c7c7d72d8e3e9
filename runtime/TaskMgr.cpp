#include "runtime/TaskMgr.h"

#include <exception>
#include <new>

namespace {

// Tasks that can be pushed without an allocation under the mutex while a batch is run.
constexpr std::size_t kRoomAhead = 64;

} // namespace

ITask::~ITask() = default;

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
    bool wasEmpty = false;
    {
        const std::lock_guard lock(m_mutex);
        wasEmpty = m_tasks.empty();
        m_tasks.push_back(std::move(task));
    }
    if (wasEmpty) // else the worker was woken for what is queued already
        m_wake.notify_one();
}

void TaskMgr::WaitTaskFinish(unsigned int milliseconds)
{
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
        m_stopTimer.start();
        m_timeLimit = milliseconds;
    }
    m_wake.notify_one();
    if (m_worker.joinable() && m_worker.get_id() != std::this_thread::get_id())
        m_worker.join();
}

void TaskMgr::TrigerWorkEvent()
{
    m_wake.notify_one();
}

bool TaskMgr::isStop() const
{
    const std::lock_guard lock(m_mutex);
    return m_stop;
}

bool TaskMgr::isWaitTimeOut() const
{
    const std::lock_guard lock(m_mutex);
    return m_stop && m_stopTimer.hasExpired(m_timeLimit);
}

bool TaskMgr::IsWorking() const
{
    return true;
}

void TaskMgr::WorkThread()
{
    for (;;) {
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stop || !m_tasks.empty(); });
        }
        if (m_stop)
            break;
        ExcuteTasks();
    }
    if (m_drain)
        ExcuteTasks();
}

void TaskMgr::ExcuteTasks()
{
    std::vector<std::shared_ptr<ITask>> batch;
    try {
        batch.reserve(kRoomAhead);
    } catch (const std::bad_alloc &) {
        // PushTask() makes room then, or tells its caller.
    }
    {
        const std::lock_guard lock(m_mutex);
        batch.swap(m_tasks);
    }
    auto next = batch.begin();
    while (next != batch.end() && !(m_stop && isWaitTimeOut())) {
        const std::shared_ptr<ITask> task = std::move(*next++);
        task->run();
    }
}
