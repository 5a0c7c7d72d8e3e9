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
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using test::scriptedSdk;
using testing::ExitedWithCode;

namespace {

/// Exits after `work` within a minute; `last` runs then, when what `work` made is destroyed.
[[noreturn]] void exitAfter(void (*work)(), void (*last)())
{
    std::atexit(last);
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
    static std::atomic<bool> exits{false};
    static std::chrono::steady_clock::time_point begun;
    const auto queue = [] {
        scriptedSdk().login = [](const auto &, const auto &, int &, bool &) {
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
    constexpr int stoodStill = 2;
    const auto ask = [] {
        const bool isLate = std::chrono::steady_clock::now() - begun > std::chrono::milliseconds(900);
        bool usesTestServer = false;
        static_cast<void>(MacGlobalUrl::GetDefSvrHost(&usesTestServer));
        if (!usesTestServer || GlobalRequestTaskMgr::getInstance()->requestLogin("a", "1"))
            ::_exit(1);
        if (logins != 20)
            ::_exit(isLate ? stoodStill : 1);
    };
    // Requests are waited for one second: where the machine itself stood still meanwhile, once more.
    int result = stoodStill;
    const auto isToldOrStoodStill = [&result](int status) {
        result = WIFEXITED(status) ? WEXITSTATUS(status) : 1;
        return result == 0 || result == stoodStill;
    };
    for (int attempt = 0; attempt < 5 && result == stoodStill; ++attempt)
        EXPECT_EXIT(exitAfter(queue, ask), isToldOrStoodStill, "");
    EXPECT_EQ(result, 0);
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
