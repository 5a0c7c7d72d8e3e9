#include "runtime/TaskMgr.h"

#include "tests/support/Eventually.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <string>
#include <vector>

using test::eventually;

namespace {

#ifdef OND_SANITIZED
constexpr int kRounds = 20'000;
#else
constexpr int kRounds = 1'000'000;
#endif
constexpr unsigned kLong = 3'600'000;

class Task : public ITask
{
public:
    explicit Task(std::function<void()> work) : m_work(std::move(work)) { }
    void run() override { m_work(); }

private:
    std::function<void()> m_work;
};

std::shared_ptr<ITask> task(std::function<void()> work)
{
    return std::make_shared<Task>(std::move(work));
}

/// A manager whose drain flag can be set.
class DrainingTaskMgr : public TaskMgr
{
public:
    explicit DrainingTaskMgr(bool drain) { m_drain = drain; }
};

} // namespace

TEST(TaskMgr, RunsInPushOrderWhateverThePriorities)
{
    std::string ran;
    std::atomic<bool> done{false};
    TaskMgr manager;
    for (const char name : {'a', 'b', 'c', 'd'}) {
        auto next = task([&ran, name] { ran += name; });
        next->setPriority(name);
        manager.PushTask(next);
        manager.PushTask(nullptr);
    }
    manager.PushTask(task([&] {
        manager.PushTask(task([&] { ran += "pushed by a task", done = true; }));
        ran += '-';
    }));
    EXPECT_TRUE(eventually([&] { return done.load(); }));
    manager.WaitTaskFinish(0);
    EXPECT_EQ(ran, "abcd-pushed by a task");
}

TEST(TaskMgr, HigherPriorityComesFirstForCallersThatSort)
{
    Task low(nullptr);
    Task high(nullptr);
    high.setPriority(1);
    EXPECT_TRUE(low(high, low));
    EXPECT_FALSE(low(low, high));
    EXPECT_FALSE(low(low, low));
}

TEST(TaskMgr, ManyProducersLoseNothingAndKeepTheirOrder)
{
    constexpr int producers = 4;
    constexpr int tasks = 5000;
    std::vector<std::vector<int>> ran(producers);
    std::atomic<int> count{0};
    TaskMgr manager;
    std::vector<std::thread> threads;
    for (int producer = 0; producer < producers; ++producer)
        threads.emplace_back([&, producer] {
            for (int i = 0; i < tasks; ++i)
                manager.PushTask(task([&, producer, i] { ran[producer].push_back(i), ++count; }));
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_TRUE(eventually([&] { return count == producers * tasks; }));
    manager.WaitTaskFinish(0);
    for (const std::vector<int> &order : ran)
        EXPECT_TRUE(order.size() == tasks && std::is_sorted(order.begin(), order.end()));
}

namespace {

struct StopCase
{
    const char *name;
    unsigned limit;
    bool drain;
    const char *ran;
};

void PrintTo(const StopCase &row, std::ostream *out)
{
    *out << row.name;
}

class TaskMgrStop : public testing::TestWithParam<StopCase>
{
};

} // namespace

// The worker has taken up a, b and c together and runs a when the stop is requested; d waits in the queue.
TEST_P(TaskMgrStop, TimeLimitAndDrainFlagDecideWhatStillRuns)
{
    const auto [name, limit, drain, expected] = GetParam();
    std::string ran;
    std::atomic<bool> taken{false};
    std::vector<std::weak_ptr<ITask>> tasks;
    {
        DrainingTaskMgr manager(drain);
        const auto push = [&](std::function<void()> work) {
            auto next = task(std::move(work));
            tasks.push_back(next);
            manager.PushTask(next);
        };
        std::atomic<bool> go{false};
        manager.PushTask(task([&] { EXPECT_TRUE(eventually([&] { return go.load(); })); }));
        push([&, limit = limit] {
            ran += 'a';
            taken = true;
            EXPECT_TRUE(eventually([&] { return limit == 0 ? manager.isWaitTimeOut() : manager.isStop(); }));
        });
        push([&] { ran += 'b'; });
        push([&] { ran += 'c'; });
        go = true;
        ASSERT_TRUE(eventually([&] { return taken.load(); }));
        push([&] { ran += 'd'; });
        EXPECT_FALSE(manager.isStop());
        EXPECT_FALSE(manager.isWaitTimeOut());

        manager.WaitTaskFinish(limit);
        EXPECT_EQ(ran, expected);
        EXPECT_TRUE(manager.isStop());
        EXPECT_TRUE(tasks[0].expired() && tasks[1].expired() && tasks[2].expired())
            << "run or dropped, all are released";
        EXPECT_EQ(tasks[3].expired(), drain) << "what was not taken up is left to the destructor";
    }
    EXPECT_TRUE(tasks[3].expired());
    EXPECT_EQ(ran, expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, TaskMgrStop,
                         testing::Values(StopCase{"NoTime", 0, false, "a"}, StopCase{"NoTimeDraining", 0, true, "a"},
                                         StopCase{"Time", kLong, false, "abc"},
                                         StopCase{"TimeDraining", kLong, true, "abcd"}),
                         [](const auto &info) { return info.param.name; });

TEST(TaskMgr, TaskMayStopItsOwnManager)
{
    std::atomic<bool> stopped{false};
    TaskMgr manager;
    manager.PushTask(task([&] {
        manager.WaitTaskFinish(0);
        stopped = true;
    }));
    EXPECT_TRUE(eventually([&] { return manager.isStop(); }));
    manager.WaitTaskFinish(kLong);
    EXPECT_TRUE(stopped);
    manager.WaitTaskFinish(kLong);
}

TEST(TaskMgr, StartsAndStopsAThousandTimes)
{
    for (int i = 0; i < 1000; ++i) {
        std::atomic<int> ran{0};
        TaskMgr manager;
        for (int pushed = 0; pushed < i % 3; ++pushed)
            manager.PushTask(task([&ran] { ++ran; }));
        if (i % 2)
            manager.TrigerWorkEvent();
        manager.WaitTaskFinish(kLong);
        ASSERT_LE(ran, i % 3);
    }
}

TEST(TaskMgr, MissesNoWakeUp)
{
    std::atomic<int> ran{0};
    const auto count = task([&ran] { ++ran; });
    TaskMgr manager;
    for (int round = 1; round <= kRounds; ++round) {
        manager.PushTask(count);
        // At once when the task has run, which is when the worker is about to fall asleep.
        for (int spin = 0; spin < 1000 && ran != round; ++spin) { }
        ASSERT_TRUE(eventually([&] { return ran == round; })) << "asleep beside a task in round " << round;
    }
    manager.WaitTaskFinish(0);
}

TEST(TaskMgrDeathTest, ManagerThatWasNotStoppedEndsTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT({ TaskMgr manager; }, testing::KilledBySignal(SIGABRT), "");
}
