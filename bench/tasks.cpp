// The task managers against what Qt offers for the same purpose.
//
// Names are SUBJECT-OR-PEER/what: TaskMgr beside QThreadPool (one thread) for tasks without work, from one producer and
// from four; TaskMgr beside two semaphores handing over for the time from push to run, of which the median and the
// 99th percentile are the reported time; QTTaskManager beside QThreadPool for queueing. The tasks are made beforehand
// and kept, so that the managers are measured and not the allocator.

#include "runtime/QTTaskManager.h"
#include "runtime/TaskMgr.h"

#include <benchmark/benchmark.h>

#include <QSemaphore>
#include <QThreadPool>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kTasksPerRound = 200'000;
constexpr int kHandOvers = 20'000;

/// What tasks without work leave behind.
class Count
{
public:
    void add() { m_done.store(m_done.load(std::memory_order_relaxed) + 1, std::memory_order_release); }
    void await(int count) const
    {
        while (m_done.load(std::memory_order_acquire) < count)
            std::this_thread::sleep_for(std::chrono::microseconds(20));
    }

private:
    std::atomic<int> m_done{0};
};

class CountTask : public ITask
{
public:
    explicit CountTask(Count &count) : m_count(count) { }
    void run() override { m_count.add(); }

private:
    Count &m_count;
};

class CountRunnable : public IQTTask
{
public:
    explicit CountRunnable(Count &count) : m_count(count) { }
    void run() override { m_count.add(); }

private:
    Count &m_count;
};

/// Time of a task from push to run. Each of the threads that push has tasks of its own, which `make(count)` makes.
template <typename Make, typename Push> void pushAndRun(benchmark::State &state, Make make, Push push)
{
    const auto producers = static_cast<int>(state.range(0));
    Count count;
    std::vector<decltype(make(count))> tasks;
    for (int i = 0; i < kTasksPerRound; ++i)
        tasks.push_back(make(count));

    int expected = 0;
    for (auto _ : state) {
        std::vector<std::thread> threads;
        for (int producer = 0; producer < producers; ++producer)
            threads.emplace_back([&, producer] {
                for (int i = 0; i < kTasksPerRound / producers; ++i)
                    push(tasks[static_cast<std::size_t>(producer * (kTasksPerRound / producers) + i)]);
            });
        for (std::thread &thread : threads)
            thread.join();
        expected += kTasksPerRound;
        count.await(expected);
    }
    state.counters["per task"] = benchmark::Counter(static_cast<double>(state.iterations()) * kTasksPerRound,
                                                    benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void taskMgrPush(benchmark::State &state)
{
    TaskMgr manager;
    pushAndRun(
        state, [](Count &count) { return std::make_shared<CountTask>(count); },
        [&manager](const std::shared_ptr<CountTask> &task) { manager.PushTask(task); });
    manager.WaitTaskFinish(0);
}

void threadPoolPush(benchmark::State &state)
{
    QThreadPool pool;
    pool.setMaxThreadCount(1);
    const auto make = [](Count &count) {
        auto task = std::make_unique<CountRunnable>(count);
        task->setAutoDelete(false);
        return task;
    };
    pushAndRun(state, make, [&pool](const std::unique_ptr<CountRunnable> &task) { pool.start(task.get()); });
    pool.waitForDone();
}

/// Hands over to another thread and back, and reports the given quantile of the first way's time.
template <typename HandOver> void reportQuantile(benchmark::State &state, HandOver handOver)
{
    const auto percent = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        std::vector<Clock::duration> times;
        times.reserve(kHandOvers);
        for (int i = 0; i < kHandOvers; ++i) {
            const Clock::time_point start = Clock::now();
            times.push_back(handOver() - start);
        }
        const auto nth = times.begin() + static_cast<std::ptrdiff_t>(times.size() * percent / 100);
        std::nth_element(times.begin(), nth, times.end());
        state.SetIterationTime(std::chrono::duration<double>(*nth).count());
    }
}

class StampTask : public ITask
{
public:
    void run() override
    {
        m_started = Clock::now();
        m_done.release();
    }
    Clock::time_point awaitStart()
    {
        m_done.acquire();
        return m_started;
    }

private:
    Clock::time_point m_started;
    QSemaphore m_done;
};

void taskMgrLatency(benchmark::State &state)
{
    TaskMgr manager;
    const auto task = std::make_shared<StampTask>();
    reportQuantile(state, [&] {
        manager.PushTask(task);
        return task->awaitStart();
    });
    manager.WaitTaskFinish(0);
}

void semaphoreLatency(benchmark::State &state)
{
    QSemaphore there;
    QSemaphore back;
    bool stop = false;
    Clock::time_point started;
    std::thread other([&] {
        for (there.acquire(); !stop; there.acquire()) {
            started = Clock::now();
            back.release();
        }
    });
    reportQuantile(state, [&] {
        there.release();
        back.acquire();
        return started;
    });
    stop = true;
    there.release();
    other.join();
}

/// Queueing alone: a runnable without deletion of its own on a pool of one thread.
template <typename Add> void addToPool(benchmark::State &state, QThreadPool &pool, Add add)
{
    Count count;
    CountRunnable runnable(count);
    runnable.setAutoDelete(false);
    for (auto _ : state)
        add(&runnable);
    pool.waitForDone();
}

void managerAdd(benchmark::State &state)
{
    QTTaskManager manager;
    manager.init(true, 1);
    addToPool(state, *QThreadPool::globalInstance(), [&manager](IQTTask *task) { manager.addTask(task); });
}

void threadPoolStart(benchmark::State &state)
{
    QThreadPool *pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(1);
    addToPool(state, *pool, [pool](IQTTask *task) { pool->start(task); });
}

} // namespace

BENCHMARK(taskMgrPush)->Name("TaskMgr/push to run, producers")->Arg(1)->Arg(4)->UseRealTime();
BENCHMARK(threadPoolPush)->Name("QThreadPool/push to run, producers")->Arg(1)->Arg(4)->UseRealTime();
BENCHMARK(taskMgrLatency)->Name("TaskMgr/latency, percentile")->Arg(50)->Arg(99)->UseManualTime()->Iterations(10);
BENCHMARK(semaphoreLatency)->Name("QSemaphore/latency, percentile")->Arg(50)->Arg(99)->UseManualTime()->Iterations(10);
BENCHMARK(managerAdd)->Name("QTTaskManager/addTask");
BENCHMARK(threadPoolStart)->Name("QThreadPool/start");

BENCHMARK_MAIN();
