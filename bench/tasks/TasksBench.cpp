// The task managers against what Qt offers for the same purpose: TaskMgr beside a QThreadPool of one thread for tasks
// without work, from one producer and from four; TaskMgr beside two semaphores handing over for the time from push to
// run, of which the median and the 99th percentile are the time; QTTaskManager beside QThreadPool for queueing. The
// tasks are made beforehand and kept, so that the managers are measured and not the allocator.

#include "bench/support/Ratios.h"
#include "runtime/QTTaskManager.h"
#include "runtime/TaskMgr.h"

#include <QSemaphore>
#include <QThreadPool>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Time = std::chrono::steady_clock;

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

/// From the first push to the last run. Each of the threads that push has tasks of its own, which `make(count)` makes.
template <typename Make, typename Push> void pushAndRun(benchmark::State &state, int producers, Make make, Push push)
{
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
}

void taskMgrPush(benchmark::State &state, int producers)
{
    TaskMgr manager;
    pushAndRun(
        state, producers, [](Count &count) { return std::make_shared<CountTask>(count); },
        [&manager](const std::shared_ptr<CountTask> &task) { manager.PushTask(task); });
    manager.WaitTaskFinish(0);
}

void threadPoolPush(benchmark::State &state, int producers)
{
    QThreadPool pool;
    pool.setMaxThreadCount(1);
    const auto make = [](Count &count) {
        auto task = std::make_unique<CountRunnable>(count);
        task->setAutoDelete(false);
        return task;
    };
    pushAndRun(state, producers, make, [&pool](const std::unique_ptr<CountRunnable> &task) { pool.start(task.get()); });
    pool.waitForDone();
}

/// Hands over to another thread and back, and reports the given quantile of the first way's time.
template <typename HandOver> void reportQuantile(benchmark::State &state, std::size_t percent, HandOver handOver)
{
    for (auto _ : state) {
        std::vector<Time::duration> times;
        times.reserve(kHandOvers);
        for (int i = 0; i < kHandOvers; ++i) {
            const Time::time_point start = Time::now();
            times.push_back(handOver() - start);
        }
        const auto nth = times.begin() + static_cast<std::ptrdiff_t>(times.size() * percent / 100);
        std::nth_element(times.begin(), nth, times.end());
        // As if all had taken as long, so that a round takes about the time that it reports.
        state.SetIterationTime(std::chrono::duration<double>(*nth).count() * kHandOvers);
    }
}

class StampTask : public ITask
{
public:
    void run() override
    {
        m_started = Time::now();
        m_done.release();
    }
    Time::time_point awaitStart()
    {
        m_done.acquire();
        return m_started;
    }

private:
    Time::time_point m_started;
    QSemaphore m_done;
};

void taskMgrLatency(benchmark::State &state, std::size_t percent)
{
    TaskMgr manager;
    const auto task = std::make_shared<StampTask>();
    reportQuantile(state, percent, [&] {
        manager.PushTask(task);
        return task->awaitStart();
    });
    manager.WaitTaskFinish(0);
}

void semaphoreLatency(benchmark::State &state, std::size_t percent)
{
    QSemaphore there;
    QSemaphore back;
    bool stop = false;
    Time::time_point started;
    std::thread other([&] {
        for (there.acquire(); !stop; there.acquire()) {
            started = Time::now();
            back.release();
        }
    });
    reportQuantile(state, percent, [&] {
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

/// A side that does `body` with an argument.
template <typename Argument>
bench::Side side(const std::string &name, void (*body)(benchmark::State &, Argument), Argument argument)
{
    return {name, [body, argument](benchmark::State &state) { body(state, argument); }};
}

void comparePush(int producers, double bound)
{
    const std::string suffix = ", producers: " + std::to_string(producers);
    bench::compare(side("TaskMgr" + suffix, taskMgrPush, producers), bench::atMost(bound),
                   side("QThreadPool" + suffix, threadPoolPush, producers), bench::Clock::wall);
}

void compareLatency(std::size_t percent, double bound)
{
    const std::string suffix =
        ", " + std::to_string(kHandOvers) + " hand-overs, percentile: " + std::to_string(percent);
    bench::compare(side("TaskMgr" + suffix, taskMgrLatency, percent), bench::atMost(bound),
                   side("two semaphores" + suffix, semaphoreLatency, percent), bench::Clock::manual);
}

} // namespace

int main(int argc, char **argv)
{
    comparePush(1, 0.9);
    comparePush(4, 0.4);
    compareLatency(50, 1.15);
    compareLatency(99, 1.25);
    bench::compare({"QTTaskManager::addTask", managerAdd}, bench::atMost(1.05),
                   {"QThreadPool::start", threadPoolStart});
    return bench::run(argc, argv);
}
