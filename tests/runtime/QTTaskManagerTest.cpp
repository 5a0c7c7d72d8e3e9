#include "runtime/QTTaskManager.h"

#include "tests/support/Eventually.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QString>
#include <atomic>
#include <functional>

using test::eventually;

namespace {

struct Call : ondeasy::IFunc
{
    explicit Call(std::function<void()> work) : m_work(std::move(work)) { ++alive; }
    ~Call() override { --alive; }
    void run() override { m_work(); }

    static inline std::atomic<int> alive{0};
    std::function<void()> m_work;
};

} // namespace

TEST(QTTaskManager, RunsOnTheProcessPoolAndRefusesEverythingBeforeInit)
{
    QTTaskManager manager;
    Call call(nullptr);
    EXPECT_FALSE(manager.addFuncTask(&call));
    EXPECT_FALSE(manager.stopAllTask());
    EXPECT_FALSE(manager.waitAllTask(0));
    EXPECT_FALSE(manager.unInit());
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
    EXPECT_FALSE(manager.addFuncTask(&dropped));
    EXPECT_FALSE(manager.unInit());

    EXPECT_TRUE(manager.init(false, 1));
    EXPECT_TRUE(manager.addFuncTask(new Call([] {})));
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
        int none() { return (seen += '-').size(); }
        void two(QString &first, const QString &second) { seen += std::exchange(first, "changed") + second; }
        QString seen;
    } target;
    ondeasy::ClassFunc_0<Target, int> none(&target, &Target::none);
    ondeasy::ClassFunc_2<Target, void, QString &, const QString &> two(&target, &Target::two, "x", "y");
    for (ondeasy::IFunc *func : std::initializer_list<ondeasy::IFunc *>{&none, &two, &none, &two})
        func->run();
    EXPECT_EQ(target.seen, "-xy-xy");
    ondeasy::ClassFunc_0<Target, int>(nullptr, &Target::none).run();
    ondeasy::ClassFunc_0<Target, int>(&target, nullptr).run();
}
