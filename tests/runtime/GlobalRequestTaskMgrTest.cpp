#include "runtime/GlobalRequestTaskMgr.h"

#include "account/CPDFNewVipSdkWrap.h"
#include "account/CPDFVipSdkAdapter.h"
#include "runtime/CommonFileLog.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/Concurrency.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScriptedSdk.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <unistd.h>

using test::eventually;

constexpr int kStoodStill = 2;

/// Logins that wait until they are released, on a started SDK.
struct Requests : testing::Test, IRequestTaskCallBack
{
    Requests()
    {
        test::scriptedSdk().login = [this](const std::wstring &user, const std::wstring &password, int &code,
                                           bool &flag) {
            EXPECT_TRUE(code == 0 && !flag);
            EXPECT_EQ(++m_running, 1) << "one after the other";
            EXPECT_TRUE(eventually([&] { return m_released.load(); }));
            m_order += user + password;
            code = 4572014;
            flag = user == L"b";
            --m_running;
            ++m_logins;
            return flag;
        };
        CPDFNewVipSdkWrap::InitInstance();
        m_manager->setLoginCallBack(this);
    }
    ~Requests() override
    {
        m_released = true;
        m_manager->unInit();
        m_manager->setLoginCallBack(nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // deletes the pools
        CPDFNewVipSdkWrap::UnInitInstance();
    }

    void onLoginFinish(bool success, int code, bool flag) override
    {
        EXPECT_EQ(success, flag);
        EXPECT_TRUE(code == 4572014 || !success) << code;
        ++m_results;
        if (m_followers > 0 && m_followers-- > 0)
            m_manager->requestLogin("b", "");
    }

    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr}; // delivers the deletion
    GlobalRequestTaskMgr *const m_manager = GlobalRequestTaskMgr::getInstance();
    std::atomic<bool> m_released{false};
    std::atomic<int> m_running{0}, m_logins{0}, m_results{0}, m_followers{0};
    std::wstring m_order;
    const test::FakeBundle m_bundle;
};

/// Exits after `work` within a minute; `last` runs then, when what `work` made is destroyed.
[[noreturn]] static void exitAfter(void (*work)(), void (*last)())
{
    std::atexit(last);
    ::alarm(60);
    work();
    std::exit(0);
}

TEST_F(Requests, RunInOrderUnlessStoppedOrGivenUpAfterASecond)
{
    EXPECT_TRUE(m_manager->requestLogin("a", "1"));
    EXPECT_TRUE(m_manager->requestLogin("b", "2"));
    m_released = true;
    EXPECT_TRUE(eventually([&] { return m_results == 2; }));

    m_released = false;
    EXPECT_TRUE(m_manager->requestLogin("b", "3"));
    EXPECT_TRUE(eventually([&] { return m_running == 1; }));
    EXPECT_TRUE(m_manager->requestLogin("a", "dropped"));
    EXPECT_TRUE(m_manager->stop());
    EXPECT_TRUE(m_manager->requestLogin("a", "dropped, too"));
    EXPECT_TRUE(m_manager->unInit());
    EXPECT_EQ(m_running, 1) << "it was not waited for";
    EXPECT_EQ((std::vector{m_manager->requestLogin("b", "no pool"), m_manager->stop(), m_manager->unInit()}),
              std::vector(3, false));
    m_released = true;
    EXPECT_TRUE(eventually([&] { return m_results == 3; }));

    EXPECT_EQ(GlobalRequestTaskMgr::getInstance(), m_manager) << "with a new pool";
    EXPECT_TRUE(m_manager->requestLogin("b", "4"));
    EXPECT_TRUE(eventually([&] { return m_results == 4; }));
    EXPECT_EQ(m_order, L"a1b2b3b4");
    m_manager->setLoginCallBack(nullptr);
    EXPECT_TRUE(m_manager->requestLogin("a", "5"));
    EXPECT_TRUE(m_manager->unInit());
    EXPECT_TRUE(eventually([&] { return m_logins == 5; }));
    EXPECT_EQ(m_results, 4) << "nobody is told";
}

// The callback queues the next login from its own thread, while the services go and come.
TEST_F(Requests, AreEndedAtAnyMoment)
{
    m_released = true;
    std::thread other([this] {
        for (int i = 0; i < 3000; ++i)
            m_manager->requestLogin("b", ""), m_manager->stop();
    });
    for (int i = 0; i < 500; ++i) {
        m_followers = 3;
        m_manager->requestLogin("b", "");
        CPDFNewVipSdkWrap::UnInitInstance();
        CPDFNewVipSdkWrap::InitInstance();
        if (i % 10 == 9) {
            EXPECT_TRUE(m_manager->unInit());
            EXPECT_TRUE(m_manager->init());
        }
        EXPECT_TRUE(m_manager->stop());
    }
    other.join();
}

TEST(ProcessEnd, QueuedRequestsFindTheirServiceAndStaticDestructorsTheirAnswers)
{
    const test::FakeBundle bundle;
    bundle.writeGlobalFile("[common]\nenable_log=1\napp_international=1\n");
    const std::string data = bundle.makeUserDataDir();
    test::writeFile(data + "use_test_server", "");
    static std::atomic<int> logins{0};
    static std::atomic<bool> exits{false};
    static std::chrono::steady_clock::time_point begun;
    const auto queue = [] {
        test::scriptedSdk().login = [](const auto &, const auto &, int &, bool &) {
            while (!exits)
                std::this_thread::yield();
            return ++logins > 0;
        };
        GlobalRequestTaskMgr *requests = GlobalRequestTaskMgr::getInstance(); // before the first start of the SDK
        CPDFVipSdkAdapter::GetInstance()->Initialize(true);
        for (int i = 0; i < 20; ++i)
            requests->requestLogin("a", "1");
        std::atexit([] {
            begun = std::chrono::steady_clock::now();
            exits = true;
        });
    };
    const auto ask = [] {
        const bool isLate = std::chrono::steady_clock::now() - begun > std::chrono::milliseconds(900);
        CommonFileLog::WriteLog("the last word");
        bool usesTestServer = false;
        static_cast<void>(MacGlobalUrl::GetDefSvrHost(&usesTestServer));
        if (!usesTestServer || GlobalRequestTaskMgr::getInstance()->requestLogin("a", "1"))
            ::_exit(1);
        if (logins != 20)
            ::_exit(isLate ? kStoodStill : 1);
    };
    // Requests are waited for one second: where the machine itself stood still meanwhile, once more.
    int result = kStoodStill;
    const auto isTold = [&result](int status) {
        result = WIFEXITED(status) ? WEXITSTATUS(status) : 1;
        return result == 0 || result == kStoodStill;
    };
    for (int attempt = 0; attempt < 5 && result == kStoodStill; ++attempt)
        EXPECT_EXIT(exitAfter(queue, ask), isTold, "");
    EXPECT_EQ(result, 0);
    EXPECT_NE(test::logMessages(data + "foo.log").find("the last word\n"), std::string::npos);
}

TEST(ProcessEnd, DoesNotWaitForACallbackThatWaitsForIt)
{
    struct Waiting : IRequestTaskCallBack
    {
        void onLoginFinish(bool, int, bool) override
        {
            isCalled = true;
            for (;;)
                ::pause();
        }
        std::atomic<bool> isCalled{false};
    };
    const test::FakeBundle bundle;
    const auto deliver = [] {
        static Waiting &waiting = *new Waiting;
        GlobalRequestTaskMgr::getInstance()->setLoginCallBack(&waiting);
        GlobalRequestTaskMgr::getInstance()->requestLogin("a", "1");
        EXPECT_TRUE(eventually([] { return waiting.isCalled.load(); }));
    };
    EXPECT_EXIT(exitAfter(deliver, [] {}), testing::ExitedWithCode(0), "");
}
