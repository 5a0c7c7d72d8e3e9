#include "runtime/TelemThread.h"

#include "runtime/ReportSignalSender.h"
#include "tests/support/Eventually.h"
#include "tests/support/ScriptedSdk.h"

#include <gtest/gtest.h>

#include "vipsdk/include/VipTelemData.h"
#include <atomic>
#include <map>

using test::eventually;
using test::scriptedSdk;

namespace {

class OtherData : public vip_sdk::IVipTelemData
{
};

} // namespace

TEST(TelemThread, ProducersLoseNothingAndDoNotWaitForReports)
{
    constexpr int records = 1000;
    std::atomic<bool> reporting{false};
    std::atomic<bool> released{false};
    std::map<wchar_t, std::vector<std::wstring>> reported; // by producer
    std::atomic<int> count{0};
    scriptedSdk().publicInfo = {1, 2, 3, 4, 5, 6, 7, "u", "v", "l"};
    scriptedSdk().report = [&](const std::wstring &event, const ProductInfoMgr::PublicInfo &info) {
        reporting = true;
        EXPECT_TRUE(eventually([&] { return released.load(); }));
        EXPECT_TRUE(info.tid1 == 1 && info.tid2 == 2 && info.tod1 == 3 && info.tod2 == 4 && info.iid == 5
                    && info.pid == 6 && info.tryNo == 7 && info.uuid == "u" && info.version == "v"
                    && info.language == "l");
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

    std::vector<std::thread> producers;
    for (const wchar_t producer : {L'A', L'B', L'C', L'D'})
        producers.emplace_back([&thread, producer] {
            for (int i = 0; i < records; ++i)
                thread.add(new VipTelemData(producer + std::to_wstring(10'000 + i)));
        });
    for (std::thread &producer : producers)
        producer.join();
    EXPECT_FALSE(thread.isListEmpty());
    EXPECT_EQ(count, 0) << "the first report still runs";
    released = true;
    EXPECT_TRUE(eventually([&] { return count == 4 * records + 1; }));
    thread.stopThread();
    EXPECT_TRUE(thread.isListEmpty());
    for (const wchar_t producer : {L'A', L'B', L'C', L'D'})
        EXPECT_TRUE(reported[producer].size() == records
                    && std::is_sorted(reported[producer].begin(), reported[producer].end()));
}

TEST(TelemThread, StopsAtAnyMomentAndForGood)
{
    scriptedSdk().report = [](const auto &, const auto &) { FAIL() << "added after the end"; };
    for (int i = 0; i < 1000; ++i) {
        TelemThread thread;
        if (i % 4 > 0)
            thread.start();
        if (i % 4 > 1) {
            ASSERT_TRUE(eventually([&] { return thread.isRunning(); }));
        }
        thread.stopThread();
        thread.add(new VipTelemData(L"pending"));
        if (i % 4 > 2)
            thread.start();
    }
}

TEST(ReportSignalSender, TellsListeners)
{
    ReportSignalSender sender;
    bool told = false;
    QObject::connect(&sender, &ReportSignalSender::stopWaitForReply, [&told] { told = true; });
    emit sender.stopWaitForReply();
    EXPECT_TRUE(told);
}
