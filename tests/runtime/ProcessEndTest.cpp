#include "account/CPDFNewVipSdkWrap.h"
#include "account/CPDFVipSdkAdapter.h"
#include "runtime/GlobalRequestTaskMgr.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScriptedSdk.h"

#include <gtest/gtest.h>

#include <QSemaphore>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <unistd.h>

using test::scriptedSdk;
using testing::ExitedWithCode;

namespace {

/// Exits after `work` within a minute; `last` runs then, as a static destructor of what was made before all else.
[[noreturn]] void exitAfter(void (*work)(), void (*last)())
{
    struct Last
    {
        ~Last() { run(); }
        void (*run)();
    };
    static const Last atExit{last};
    ::alarm(60);
    work();
    std::exit(0);
}

} // namespace

TEST(ProcessEnd, QueuedRequestsFindTheirServiceAndStaticDestructorsTheirAnswers)
{
    const test::FakeBundle bundle;
    bundle.writeGlobalFile("[common]\napp_international=1\n");
    test::writeFile(bundle.makeUserDataDir() + "use_test_server", "");
    static std::atomic<int> logins{0};
    const auto queue = [] {
        scriptedSdk().login = [](const auto &, const auto &, int &, bool &) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            return ++logins > 0;
        };
        GlobalRequestTaskMgr *requests = GlobalRequestTaskMgr::getInstance(); // before the first start of the SDK
        CPDFVipSdkAdapter::GetInstance()->Initialize(true);
        for (int i = 0; i < 20; ++i)
            requests->requestLogin("a", "1");
    };
    const auto ask = [] {
        bool usesTestServer = false;
        static_cast<void>(MacGlobalUrl::GetDefSvrHost(&usesTestServer));
        if (logins != 20 || !usesTestServer || GlobalRequestTaskMgr::getInstance()->requestLogin("a", "1"))
            ::_exit(1);
    };
    EXPECT_EXIT(exitAfter(queue, ask), ExitedWithCode(0), "");
}

TEST(ProcessEnd, DoesNotWaitForACallbackThatWaitsForIt)
{
    struct Waiting : IRequestTaskCallBack
    {
        void onLoginFinish(bool, int, bool) override
        {
            called.release();
            called.acquire(2);
        }
        QSemaphore called;
    };
    const test::FakeBundle bundle;
    const auto deliver = [] {
        static Waiting &waiting = *new Waiting;
        GlobalRequestTaskMgr::getInstance()->setLoginCallBack(&waiting);
        GlobalRequestTaskMgr::getInstance()->requestLogin("a", "1");
        while (waiting.called.available() == 0)
            std::this_thread::yield();
    };
    EXPECT_EXIT(exitAfter(deliver, [] {}), ExitedWithCode(0), "");
}
