// The header compiles with what its users may have switched on.
#pragma GCC diagnostic push
#pragma GCC diagnostic error "-Wnon-virtual-dtor"
#include "runtime/TaskMgr.h"
#pragma GCC diagnostic pop

#include "runtime/QTTaskManager.h"
#include "runtime/TelemThread.h"
#include "tests/support/Concurrency.h"
#include "tests/support/ScriptedSdk.h"
#include "vipsdk/include/VipTelemData.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QThreadPool>
#include <algorithm>
#include <atomic>
#include <functional>
#include <map>
#include <numeric>

using test::eventually;

constexpr unsigned kLong = 3'600'000;

/// A task or a call of this work.
template <typename Interface> struct Work : Interface
{
    explicit Work(std::function<void()> work) : m_work(std::move(work)) { ++alive; }
    ~Work() override { --alive; }
    void run() override { m_work(); }

    static inline std::atomic<int> alive{0};
    std::function<void()> m_work;
};

using Call = Work<ondeasy::IFunc>;
using Task = Work<ITask>;

/// A manager whose drain flag can be set.
struct DrainingTaskMgr final : TaskMgr
{
    explicit DrainingTaskMgr(bool drain) { m_drain = drain; }
};

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
        if (i % 2) { // a task may request the stop, which must come again from outside
            manager.PushTask(std::make_shared<Task>([&manager] { manager.WaitTaskFinish(0); }));
            ASSERT_TRUE(eventually([&manager] { return manager.isStop(); }));
        } else
            manager.TrigerWorkEvent();
        manager.WaitTaskFinish(kLong);
    }
}

TEST(QTTaskManager, RunsOnTheProcessPoolAndRefusesEverythingBeforeInit)
{
    QTTaskManager manager;
    Call call(nullptr);
    EXPECT_EQ(
        (std::vector{manager.addFuncTask(&call), manager.stopAllTask(), manager.waitAllTask(0), manager.unInit()}),
        std::vector(4, false));
    EXPECT_TRUE(manager.init(true, 3));
    EXPECT_TRUE(manager.init(false, 8)) << "and keeps the first pool";
    EXPECT_EQ(QThreadPool::globalInstance()->maxThreadCount(), 3);
    EXPECT_TRUE(manager.addFuncTask(new Call([] {})));
    EXPECT_TRUE(manager.addTask(new IFuncTask(nullptr)));
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone());
    EXPECT_EQ(Call::alive, 1) << "none but that of the test";
}

TEST(QTTaskManager, LeavesDroppedCallsToTheirMakerAndABusyPoolToItself)
{
    int argc = 0;
    const QCoreApplication application(argc, nullptr); // deletes the pool in the end, as an event loop would
    std::atomic<bool> running{false}, released{false};
    QTTaskManager manager;
    EXPECT_TRUE(manager.init(false, 1));
    EXPECT_FALSE(manager.addTask(nullptr));
    EXPECT_FALSE(manager.addFuncTask(nullptr));
    EXPECT_TRUE(manager.addFuncTask(new Call([&] {
        running = true;
        EXPECT_TRUE(eventually([&] { return released.load(); }));
        running = false;
    })));
    EXPECT_TRUE(eventually([&] { return running.load(); }));
    Call dropped([] { FAIL() << "was dropped"; });
    EXPECT_TRUE(manager.addFuncTask(&dropped));
    EXPECT_TRUE(manager.stopAllTask());
    EXPECT_FALSE(manager.waitAllTask(20)) << "one thread, and that is busy";
    EXPECT_TRUE(manager.addFuncTask(&dropped));
    EXPECT_TRUE(manager.unInit()) << "does not wait";
    EXPECT_FALSE(manager.unInit());

    EXPECT_TRUE(manager.init(false, 1));
    EXPECT_TRUE(manager.addFuncTask(new Call([&] { EXPECT_TRUE(manager.stopAllTask()) << "from a call"; })));
    EXPECT_TRUE(manager.waitAllTask(-1)) << "a fresh pool";
    EXPECT_EQ(Call::alive, 2) << "what ran is deleted, what was dropped is not";
    released = true;
    EXPECT_TRUE(eventually([&] { return !running; }));
    EXPECT_TRUE(manager.unInit());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Call::alive, 1);
}

TEST(OndEasyFunc, CallsWithFreshCopiesEachTime)
{
    struct Target
    {
        void run(QString &first, const QString &second) { seen += std::exchange(first, "changed") + second; }
        QString seen;
    } target;
    using Func = ondeasy::ClassFunc_2<Target, void, QString &, const QString &>;
    Func func(&target, &Target::run, "x", "y");
    func.run();
    func.run();
    EXPECT_EQ(target.seen, "xyxy");
    Func(nullptr, &Target::run, "x", "y").run();
    Func(&target, nullptr, "x", "y").run();
}

TEST(TelemThread, ProducersLoseNothingAndDoNotWaitForReports)
{
    const std::wstring producers = L"ABCD";
    std::atomic<bool> reporting{false}, released{false};
    std::atomic<std::size_t> count{0};
    std::map<wchar_t, std::vector<std::wstring>> reported; // by producer
    test::scriptedSdk().publicInfo = {1, 2, 3, 4, 5, 6, 7, "u", "v", "l"};
    test::scriptedSdk().report = [&](const std::wstring &event, const ProductInfoMgr::PublicInfo &info) {
        reporting = true;
        EXPECT_TRUE(eventually([&] { return released.load(); }));
        EXPECT_EQ((std::vector{info.tid1, info.tid2, info.tod1, info.tod2, info.iid, info.pid, info.tryNo}),
                  (std::vector{1, 2, 3, 4, 5, 6, 7}));
        EXPECT_EQ(info.uuid + info.version + info.language, "uvl");
        reported[event[0]].push_back(event);
        ++count;
    };
    struct : vip_sdk::IVipTelemData
    {
    } other;
    TelemThread thread;
    EXPECT_TRUE(thread.isListEmpty());
    thread.start();
    thread.add(&other);
    thread.add(nullptr);
    thread.add(new VipTelemData(L"first"));
    ASSERT_TRUE(eventually([&] { return reporting.load(); }));

    test::onThreads(4, [&](int producer) {
        for (int i = 10'000; i < 11'000; ++i)
            thread.add(new VipTelemData(producers[producer] + std::to_wstring(i)));
    });
    EXPECT_FALSE(thread.isListEmpty());
    EXPECT_EQ(count, 0U) << "the first report still runs";
    released = true;
    EXPECT_TRUE(eventually([&] { return count == 4001; }));
    thread.stopThread();
    for (const wchar_t producer : producers)
        EXPECT_TRUE(std::is_sorted(reported[producer].begin(), reported[producer].end())) << producer;
}

TEST(TelemThread, StopsAtAnyMomentAndForGood)
{
    test::scriptedSdk().report = [](const auto &, const auto &) { FAIL() << "added after the end"; };
    for (int i = 0; i < 1000; ++i) {
        TelemThread thread;
        if (i % 4 > 0)
            thread.start();
        while (i % 4 > 1 && !thread.isRunning()) { }
        thread.stopThread();
        thread.add(new VipTelemData(L"pending"));
        if (i % 4 > 2)
            thread.start();
    }
}
