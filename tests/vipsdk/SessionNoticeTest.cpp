#include "tests/support/Eventually.h"
#include "tests/vipsdk/TestStore.h"

#include <gtest/gtest.h>

#include <atomic>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using test::eventually;
using test::TestStore;
using vip_sdk::VipSdkCoreInterfaceImpl;

namespace {

class Listener : public vip_sdk::IUserInfoChangeListener
{
public:
    void OnUserInfoChange() override
    {
        onOwnThread = std::this_thread::get_id() != test;
        ++changes;
    }
    void OnLogoutForeverUserInfoChange() override { ++closures; }

    const std::thread::id test = std::this_thread::get_id();
    std::atomic<int> changes{0};
    std::atomic<int> closures{0};
    std::atomic<bool> onOwnThread{false};
};

/// Removes itself and stops the SDK when it is called.
class LeavingListener : public Listener
{
public:
    explicit LeavingListener(VipSdkCoreInterfaceImpl &core) : m_core(core) { }
    void OnUserInfoChange() override
    {
        m_core.RemoveUserInfoChangeListener(this);
        m_core.UnInitialize();
        Listener::OnUserInfoChange();
    }

private:
    VipSdkCoreInterfaceImpl &m_core;
};

} // namespace

TEST(SessionNotice, ListenersAreToldOnTheSdksThread)
{
    const TestStore store;
    VipSdkCoreInterfaceImpl core;
    Listener listener;
    Listener removed;
    EXPECT_FALSE(core.StartFrontTask());
    core.AddUserInfoChangeListener(&listener);
    core.AddUserInfoChangeListener(&listener);
    core.AddUserInfoChangeListener(&removed);
    core.AddUserInfoChangeListener(nullptr);
    core.RemoveUserInfoChangeListener(&removed);
    core.Initialize();
    core.Initialize();
    EXPECT_TRUE(core.StartFrontTask());

    EXPECT_TRUE(core.SetUserInfo(L"seed", L"t", L"n", L"a"));
    EXPECT_TRUE(eventually([&] { return listener.changes == 1; }));
    EXPECT_TRUE(listener.onOwnThread);
    EXPECT_TRUE(core.LogoutForever(nullptr));
    EXPECT_TRUE(eventually([&] { return listener.closures == 1; }));

    core.UnInitialize();
    EXPECT_TRUE(core.SetUserInfo(L"seed", L"t", L"n", L"a"));
    core.Initialize();
    EXPECT_TRUE(core.Logout());
    EXPECT_TRUE(eventually([&] { return listener.changes == 2; })) << "what changes meanwhile is not told";
    core.UnInitialize();
    EXPECT_EQ(listener.changes, 2);
    EXPECT_EQ(removed.changes + removed.closures, 0);
}

TEST(SessionNotice, ListenerMayLeaveAndStopFromTheNotice)
{
    const TestStore store;
    VipSdkCoreInterfaceImpl core;
    LeavingListener leaving(core);
    Listener staying;
    core.AddUserInfoChangeListener(&leaving);
    core.AddUserInfoChangeListener(&staying);
    core.Initialize();
    ASSERT_EQ(TestStore::login(), 0);
    EXPECT_TRUE(eventually([&] { return leaving.changes == 1 && staying.changes == 1; }));
    core.Initialize();
    EXPECT_TRUE(core.Logout());
    EXPECT_TRUE(eventually([&] { return staying.changes == 2; }));
    EXPECT_EQ(leaving.changes, 1);
}

TEST(SessionNotice, CrossesProcesses)
{
    const TestStore store;
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        // Never stopped, and ends all the same.
        auto *core = new VipSdkCoreInterfaceImpl;
        auto *listener = new Listener;
        core->AddUserInfoChangeListener(listener);
        core->Initialize();
        if (::write(ready[1], "r", 1) != 1)
            std::exit(1);
        const bool told = eventually([&] { return listener->changes > 0; }) && core->IsLogin();
        core->Logout();
        std::exit(told ? 0 : 2);
    }
    pollfd poll{ready[0], POLLIN, 0};
    ASSERT_EQ(::poll(&poll, 1, 60'000), 1);
    ASSERT_EQ(TestStore::login(), 0);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_FALSE(VipSdkCoreInterfaceImpl().IsLogin());
}
