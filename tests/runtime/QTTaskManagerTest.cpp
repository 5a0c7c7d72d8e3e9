#include "runtime/QTTaskManager.h"
#include "runtime/AutoLocker.h"

#include "tests/support/Eventually.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>

using test::eventually;

namespace {

class Call : public ondeasy::IFunc
{
public:
    explicit Call(std::function<void()> work) : m_work(std::move(work)) { ++alive; }
    ~Call() override { --alive; }
    void run() override { m_work(); }

    static inline std::atomic<int> alive{0};

private:
    std::function<void()> m_work;
};

/// Deletes the pools that were given up, as an event loop would.
void deletePools()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// A manager with a pool of one thread, which a first call keeps busy until release().
class BusyManager
{
public:
    BusyManager()
    {
        m_manager.init(false, 1);
        m_manager.addFuncTask(new Call([this] {
            m_running = true;
            EXPECT_TRUE(eventually([this] { return m_released.load(); }));
        }));
        EXPECT_TRUE(eventually([this] { return m_running.load(); }));
    }
    ~BusyManager()
    {
        release();
        m_manager.waitAllTask(-1);
        m_manager.unInit();
        deletePools();
    }
    BusyManager(const BusyManager &) = delete;
    BusyManager &operator=(const BusyManager &) = delete;

    QTTaskManager *operator->() { return &m_manager; }
    void release() { m_released = true; }

private:
    QTTaskManager m_manager;
    std::atomic<bool> m_running{false};
    std::atomic<bool> m_released{false};
};

} // namespace

TEST(QTTaskManager, RefusesEverythingBeforeInit)
{
    QTTaskManager manager;
    const auto task = std::make_unique<IFuncTask>(nullptr);
    const auto call = std::make_unique<Call>(nullptr);
    EXPECT_FALSE(manager.addTask(task.get()));
    EXPECT_FALSE(manager.addFuncTask(call.get()));
    EXPECT_FALSE(manager.stopAllTask());
    EXPECT_FALSE(manager.waitAllTask(0));
    EXPECT_FALSE(manager.unInit());
    task->run();
}

TEST(QTTaskManager, SecondInitKeepsTheFirstPool)
{
    const int globalThreads = QThreadPool::globalInstance()->maxThreadCount();
    BusyManager manager;
    EXPECT_TRUE(manager->init(true, globalThreads + 8));
    EXPECT_EQ(QThreadPool::globalInstance()->maxThreadCount(), globalThreads);

    std::atomic<bool> ran{false};
    EXPECT_TRUE(manager->addFuncTask(new Call([&] { ran = true; })));
    EXPECT_FALSE(manager->waitAllTask(20));
    EXPECT_FALSE(ran) << "one thread, and that is busy";
    manager.release();
    EXPECT_TRUE(manager->waitAllTask(-1));
    EXPECT_TRUE(ran);
    EXPECT_FALSE(manager->addTask(nullptr));
    EXPECT_FALSE(manager->addFuncTask(nullptr));
}

TEST(QTTaskManager, RunsOnTheProcessPool)
{
    QTTaskManager manager;
    EXPECT_TRUE(manager.init(true, 3));
    EXPECT_EQ(QThreadPool::globalInstance()->maxThreadCount(), 3);
    EXPECT_TRUE(manager.addFuncTask(new Call([] {})));
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone());
    EXPECT_EQ(Call::alive, 0);
}

TEST(QTTaskManager, DroppedCallsStayWithTheirMaker)
{
    BusyManager manager;
    const auto call = std::make_unique<Call>([] { FAIL() << "was dropped"; });
    EXPECT_TRUE(manager->addFuncTask(call.get()));
    EXPECT_TRUE(manager->stopAllTask());
    manager.release();
    EXPECT_TRUE(manager->waitAllTask(-1));
    EXPECT_EQ(Call::alive, 1) << "the call that ran is deleted, the dropped one is not";
}

TEST(QTTaskManager, TaskMayStopItsPool)
{
    BusyManager manager;
    const auto dropped = std::make_unique<Call>([] { FAIL() << "was dropped"; });
    EXPECT_TRUE(manager->addFuncTask(new Call([&] { EXPECT_TRUE(manager->stopAllTask()); })));
    EXPECT_TRUE(manager->addFuncTask(dropped.get()));
    manager.release();
    EXPECT_TRUE(manager->waitAllTask(-1));
}

TEST(QTTaskManager, GetsAFreshPoolAfterUnInitWhileATaskStillRuns)
{
    BusyManager manager;
    EXPECT_TRUE(manager->unInit());
    EXPECT_FALSE(manager->addFuncTask(nullptr));
    EXPECT_FALSE(manager->unInit());

    EXPECT_TRUE(manager->init(false, 1));
    std::atomic<bool> ran{false};
    EXPECT_TRUE(manager->addFuncTask(new Call([&] { ran = true; })));
    EXPECT_TRUE(manager->waitAllTask(-1));
    EXPECT_TRUE(ran);
}

TEST(AutoLocker, HoldsForItsScope)
{
    QMutex mutex;
    {
        const AutoLocker locker(mutex);
        EXPECT_FALSE(mutex.tryLock());
    }
    EXPECT_TRUE(mutex.tryLock());
    mutex.unlock();
}

namespace {

class Target
{
public:
    virtual ~Target() = default;
    virtual int none() { return ++calls; }
    void one(QString text) { seen += text; }
    void two(const QString &first, QString second) { seen += first + second; }

    int calls = 0;
    QString seen;
};

class DerivedTarget : public Target
{
public:
    int none() override { return calls += 10; }
};

} // namespace

TEST(OndEasyFunc, CallsWithFreshCopiesEachTime)
{
    DerivedTarget target;
    QString text = "x";
    ondeasy::ClassFunc_0<Target, int> none(&target, &Target::none);
    ondeasy::ClassFunc_1<Target, void, QString> one(&target, &Target::one, text);
    ondeasy::ClassFunc_2<Target, void, const QString &, QString> two(&target, &Target::two, text, "y");
    text = "changed";
    for (ondeasy::IFunc *func : std::initializer_list<ondeasy::IFunc *>{&none, &one, &two, &none, &one, &two})
        func->run();
    EXPECT_EQ(target.calls, 20) << "through the virtual table";
    EXPECT_EQ(target.seen, "xxyxxy");

    ondeasy::ClassFunc_0<Target, int>(nullptr, &Target::none).run();
    ondeasy::ClassFunc_0<Target, int>(&target, nullptr).run();
}
