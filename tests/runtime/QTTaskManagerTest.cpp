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
    IFuncTask task(nullptr);
    Call call(nullptr);
    EXPECT_FALSE(manager.addTask(&task));
    EXPECT_FALSE(manager.addFuncTask(&call));
    EXPECT_FALSE(manager.stopAllTask());
    EXPECT_FALSE(manager.waitAllTask(0));
    EXPECT_FALSE(manager.unInit());
    task.run();

    EXPECT_TRUE(manager.init(true, 3));
    EXPECT_TRUE(manager.init(false, 8)) << "and keeps the first pool";
    EXPECT_EQ(QThreadPool::globalInstance()->maxThreadCount(), 3);
    EXPECT_TRUE(manager.addFuncTask(new Call([] {})));
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone());
    EXPECT_EQ(Call::alive, 1) << "none but that of the test";
}

TEST(QTTaskManager, LeavesDroppedCallsToTheirMakerAndABusyPoolToItself)
{
    int argc = 0;
    const QCoreApplication application(argc, nullptr); // deletes the pools in the end, as an event loop would
    std::atomic<bool> running{false}, released{false};
    QTTaskManager manager;
    EXPECT_TRUE(manager.init(false, 1));
    EXPECT_FALSE(manager.addTask(nullptr));
    EXPECT_FALSE(manager.addFuncTask(nullptr));
    const auto begin = [&] {
        EXPECT_TRUE(manager.addFuncTask(new Call([&] {
            running = true;
            EXPECT_TRUE(eventually([&] { return released.load(); }));
            static_cast<void>(manager.stopAllTask()); // which a task may
            running = false;
        })));
        EXPECT_TRUE(eventually([&] { return running.load(); }));
    };
    begin();
    Call dropped([] { FAIL() << "was dropped"; });
    EXPECT_TRUE(manager.addFuncTask(&dropped));
    EXPECT_TRUE(manager.stopAllTask());
    EXPECT_FALSE(manager.waitAllTask(20)) << "one thread, and that is busy";
    EXPECT_TRUE(manager.addFuncTask(&dropped));
    released = true;
    EXPECT_TRUE(manager.waitAllTask(-1));
    EXPECT_EQ(Call::alive, 1) << "the call that ran is deleted, the dropped one is not";

    released = false;
    begin();
    EXPECT_TRUE(manager.unInit()) << "does not wait";
    EXPECT_FALSE(manager.addFuncTask(&dropped));
    EXPECT_FALSE(manager.unInit());
    EXPECT_TRUE(manager.init(false, 1));
    EXPECT_TRUE(manager.addFuncTask(new Call([] {})));
    EXPECT_TRUE(manager.waitAllTask(-1)) << "a fresh pool";
    EXPECT_EQ(Call::alive, 2);
    released = true;
    EXPECT_TRUE(eventually([&] { return !running; }));
    manager.unInit();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST(OndEasyFunc, CallsWithFreshCopiesEachTime)
{
    struct Target
    {
        virtual ~Target() = default;
        virtual int none() { return 0; }
        void two(const QString &first, QString second) { seen += first + second; }
        QString seen;
    };
    struct : Target
    {
        int none() override { return (seen += '-').size(); }
    } target;
    QString text = "x";
    ondeasy::ClassFunc_0<Target, int> none(&target, &Target::none);
    ondeasy::ClassFunc_2<Target, void, const QString &, QString> two(&target, &Target::two, text, "y");
    text = "changed";
    for (ondeasy::IFunc *func : std::initializer_list<ondeasy::IFunc *>{&none, &two, &none, &two})
        func->run();
    EXPECT_EQ(target.seen, "-xy-xy");

    ondeasy::ClassFunc_0<Target, int>(nullptr, &Target::none).run();
    ondeasy::ClassFunc_0<Target, int>(&target, nullptr).run();
}
