// The header compiles with what its users may have switched on.
#pragma GCC diagnostic push
#pragma GCC diagnostic error "-Wnon-virtual-dtor"
#include "runtime/TaskMgr.h"
#pragma GCC diagnostic pop

#include "tests/support/Eventually.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

using test::eventually;

namespace {

constexpr unsigned kLong = 3'600'000;

struct Task : ITask
{
    explicit Task(std::function<void()> work) : m_work(std::move(work)) { }
    void run() override { m_work(); }

    std::function<void()> m_work;
};

/// A manager whose drain flag can be set.
struct DrainingTaskMgr final : TaskMgr
{
    explicit DrainingTaskMgr(bool drain) { m_drain = drain; }
};

} // namespace

TEST(TaskMgr, ManyProducersLoseNothingAndKeepTheirOrderWhateverThePriorities)
{
    constexpr int producers = 4;
    constexpr int tasks = 5000;
    std::vector<std::vector<int>> ran(producers);
    std::atomic<int> count{0};
    TaskMgr manager;
    test::onThreads(producers, [&](int producer) {
        for (int i = 0; i < tasks; ++i) {
            const auto next = std::make_shared<Task>([&, producer, i] { ran[producer].push_back(i), ++count; });
            next->setPriority(i);
            manager.PushTask(next);
            manager.PushTask(nullptr);
        }
    });
    manager.PushTask(std::make_shared<Task>([&] { manager.PushTask(std::make_shared<Task>([&] { ++count; })); }));
    EXPECT_TRUE(eventually([&] { return count == producers * tasks + 1; }));
    manager.WaitTaskFinish(0);
    std::vector<int> all(tasks);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(ran, std::vector(producers, all));
}

// The worker has taken up a, b and c together and runs a when the stop is requested; d waits in the queue.
TEST(TaskMgr, TimeLimitAndDrainFlagDecideWhatStillRuns)
{
    const std::tuple<unsigned, bool, const char *> rows[] = {
        {0, false, "a"}, {0, true, "a"}, {kLong, false, "abc"}, {kLong, true, "abcd"}};
    for (const auto &[limit, drain, expected] : rows) {
        std::string ran;
        std::atomic<bool> busy{false}, go{false}, taken{false};
        DrainingTaskMgr manager(drain);
        const auto push = [&](std::function<void()> work) {
            manager.PushTask(std::make_shared<Task>(std::move(work)));
        };
        push([&] {
            busy = true;
            EXPECT_TRUE(eventually([&] { return go.load(); }));
        });
        // Alone: what is pushed from here on waits for the worker's next look, which takes it all.
        ASSERT_TRUE(eventually([&] { return busy.load(); }));
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
        manager.WaitTaskFinish(limit);
        EXPECT_EQ(ran, expected);
    }
}

TEST(TaskMgr, MissesNoWakeUpAndStopsAtAnyMoment)
{
    std::atomic<int> ran{0};
    const auto count = std::make_shared<Task>([&ran] { ++ran; });
    for (int i = 0; i < 300; ++i) {
        TaskMgr manager;
        for (int round = ran + 1, last = ran + i; round <= last; ++round) {
            manager.PushTask(count);
            // At once when the task has run, which is when the worker is about to fall asleep.
            for (int spin = 0; spin < 1000 && ran != round; ++spin) { }
            ASSERT_TRUE(eventually([&] { return ran == round; })) << "asleep beside a task in round " << round;
        }
        if (i % 2)
            manager.TrigerWorkEvent();
        else // a task may request the stop, which must come again from outside
            manager.PushTask(std::make_shared<Task>([&manager] { manager.WaitTaskFinish(0); }));
        EXPECT_TRUE(i % 2 || eventually([&manager] { return manager.isStop(); }));
        manager.WaitTaskFinish(kLong);
    }
}

TEST(TaskMgrDeathTest, ManagerThatWasNotStoppedEndsTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT({ TaskMgr manager; }, testing::KilledBySignal(SIGABRT), "");
}
