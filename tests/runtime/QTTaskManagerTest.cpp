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

/// A manager with a pool of one thread, which a first call keeps busy until `released`.
class Busy : public testing::Test
{
protected:
    Busy()
    {
        manager.init(false, 1);
        manager.addFuncTask(new Call([this] {
            running = true;
            EXPECT_TRUE(eventually([this] { return released.load(); }));
            running = false;
        }));
        EXPECT_TRUE(eventually([this] { return running.load(); }));
    }
    ~Busy() override
    {
        released = true;
        EXPECT_TRUE(eventually([this] { return !running; })) << "also in a pool that the manager gave up";
        manager.waitAllTask(-1);
        manager.unInit();
        QCoreApplication::sendPostedEvents(nullptr,
                                           QEvent::DeferredDelete); // deletes the pools, as an event loop would
    }

    int argc = 0;
    QCoreApplication application{argc, nullptr}; // delivers the deletion
    std::atomic<bool> running{false}, released{false};
    QTTaskManager manager;
};

} // namespace

TEST(QTTaskManager, RunsOnTheProcessPoolAndRefusesEverythingBeforeInit)
{
    QTTaskManager manager;
    IFuncTask task(nullptr);
    Call call(nullptr);
    EXPECT_FALSE(manager.addTask(&task) || manager.addFuncTask(&call) || manager.stopAllTask());
    EXPECT_FALSE(manager.waitAllTask(0) || manager.unInit());
    task.run();

    EXPECT_TRUE(manager.init(true, 3));
    EXPECT_TRUE(manager.init(false, 8)) << "and keeps the first pool";
    EXPECT_EQ(QThreadPool::globalInstance()->maxThreadCount(), 3);
    EXPECT_TRUE(manager.addFuncTask(new Call([] {})));
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone());
    EXPECT_EQ(Call::alive, 1) << "none but that of the test";
}

TEST_F(Busy, DroppedCallsStayWithTheirMakerEvenWhenATaskStopsItsPool)
{
    Call dropped([] { FAIL() << "was dropped"; });
    EXPECT_TRUE(manager.addFuncTask(&dropped) && manager.stopAllTask());
    EXPECT_TRUE(manager.addFuncTask(new Call([this] { EXPECT_TRUE(manager.stopAllTask()); })));
    EXPECT_TRUE(manager.addFuncTask(&dropped));
    released = true;
    EXPECT_TRUE(manager.waitAllTask(-1));
    EXPECT_EQ(Call::alive, 1) << "the calls that ran are deleted, the dropped one is not";
}

TEST_F(Busy, GetsAFreshPoolAfterUnInitWhileATaskStillRuns)
{
    EXPECT_FALSE(manager.addTask(nullptr) || manager.addFuncTask(nullptr));
    EXPECT_FALSE(manager.waitAllTask(20)) << "one thread, and that is busy";
    EXPECT_TRUE(manager.unInit());
    EXPECT_FALSE(manager.addFuncTask(nullptr) || manager.unInit());
    EXPECT_TRUE(manager.init(false, 1) && manager.addFuncTask(new Call([] {})) && manager.waitAllTask(-1));
    EXPECT_EQ(Call::alive, 1) << "only the busy one";
}

TEST(OndEasyFunc, CallsWithFreshCopiesEachTime)
{
    struct Target
    {
        virtual ~Target() = default;
        virtual int none() { return 0; }
        void one(QString text) { seen += text; }
        void two(const QString &first, QString second) { seen += first + second; }
        QString seen;
    };
    struct : Target
    {
        int none() override { return (seen += '-').size(); }
    } target;
    QString text = "x";
    ondeasy::ClassFunc_0<Target, int> none(&target, &Target::none);
    ondeasy::ClassFunc_1<Target, void, QString> one(&target, &Target::one, text);
    ondeasy::ClassFunc_2<Target, void, const QString &, QString> two(&target, &Target::two, text, "y");
    text = "changed";
    for (ondeasy::IFunc *func : std::initializer_list<ondeasy::IFunc *>{&none, &one, &two, &none, &one, &two})
        func->run();
    EXPECT_EQ(target.seen, "-xxy-xxy");

    ondeasy::ClassFunc_0<Target, int>(nullptr, &Target::none).run();
    ondeasy::ClassFunc_0<Target, int>(&target, nullptr).run();
}
