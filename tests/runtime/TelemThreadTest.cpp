#include "runtime/TelemThread.h"

#include "tests/support/Eventually.h"
#include "tests/support/ScriptedSdk.h"
#include "vipsdk/include/VipTelemData.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>

using test::eventually;
using test::scriptedSdk;

namespace {

struct OtherData : vip_sdk::IVipTelemData
{
};

} // namespace

TEST(TelemThread, ProducersLoseNothingAndDoNotWaitForReports)
{
    const std::wstring producers = L"ABCD";
    std::atomic<bool> reporting{false}, released{false};
    std::atomic<std::size_t> count{0};
    std::map<wchar_t, std::vector<std::wstring>> reported; // by producer
    scriptedSdk().publicInfo = {1, 2, 3, 4, 5, 6, 7, "u", "v", "l"};
    scriptedSdk().report = [&](const std::wstring &event, const ProductInfoMgr::PublicInfo &info) {
        reporting = true;
        EXPECT_TRUE(eventually([&] { return released.load(); }));
        EXPECT_EQ((std::vector{info.tid1, info.tid2, info.tod1, info.tod2, info.iid, info.pid, info.tryNo}),
                  (std::vector{1, 2, 3, 4, 5, 6, 7}));
        EXPECT_EQ(info.uuid + info.version + info.language, "uvl");
        reported[event[0]].push_back(event);
        ++count;
    };
    OtherData other;
    TelemThread thread;
    thread.start();
    thread.add(&other);
    thread.add(nullptr);
    thread.add(new VipTelemData(L"first"));
    ASSERT_TRUE(eventually([&] { return reporting.load(); }));

    test::onThreads(4, [&](int producer) {
        for (int i = 10'000; i < 11'000; ++i)
            thread.add(new VipTelemData(producers[producer] + std::to_wstring(i)));
    });
    EXPECT_TRUE(!thread.isListEmpty() && count == 0) << "the first report still runs";
    released = true;
    EXPECT_TRUE(eventually([&] { return count == 4001; }));
    thread.stopThread();
    for (const wchar_t producer : producers)
        EXPECT_TRUE(std::is_sorted(reported[producer].begin(), reported[producer].end())) << producer;
}

TEST(TelemThread, StopsAtAnyMomentAndForGood)
{
    scriptedSdk().report = [](const auto &, const auto &) { FAIL() << "added after the end"; };
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
