#include "account/VipSdkWrapper.h"
#include "account/CPDFNewVipSdkWrap.h"
#include "tests/support/Eventually.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScriptedSdk.h"
#include "vipsdk/include/IVipSdkCoreInterface.h"
#include "vipsdk/include/IVipSdkTelemInterface.h"
#include "vipsdk/include/VipTelemData.h"

#include <gtest/gtest.h>

#include <atomic>

using test::scriptedSdk;
using vip_sdk::VipSdkWrapper;

using Calls = std::vector<std::string>;

TEST(VipSdkWrapper, InternationalEditionUsesTheSdksTelemetryAndStopsInReverse)
{
    const test::FakeBundle bundle;
    bundle.writeGlobalFile("[common]\napp_international=1\n");
    EXPECT_EQ(VipSdkWrapper::GetVipSdkCoreInterface(), nullptr);
    EXPECT_TRUE(VipSdkWrapper::UnInit()) << "nothing was started";

    EXPECT_TRUE(VipSdkWrapper::Init());
    const auto *first = VipSdkWrapper::GetVipSdkCoreInterface();
    EXPECT_TRUE(CPDFNewVipSdkWrap::_Init());
    EXPECT_NE(VipSdkWrapper::GetVipSdkCoreInterface(), first) << "replaced, and not stopped";
    scriptedSdk().stopping = [] { EXPECT_EQ(VipSdkWrapper::GetVipSdkCoreInterface(), nullptr) << "found no more"; };
    EXPECT_TRUE(CPDFNewVipSdkWrap::GetInstance()->_Uninit());
    EXPECT_EQ(scriptedSdk().calls,
              (Calls{"prepare product information", "start core", "start telemetry", "prepare product information",
                     "start core", "start telemetry", "stop telemetry", "stop core"}));
    EXPECT_EQ(VipSdkWrapper::GetVipSdkCoreInterface(), nullptr);
    EXPECT_EQ(VipSdkWrapper::GetVipTelemInterface(), nullptr);
}

TEST(VipSdkWrapper, DomesticEditionReportsFromItsOwnThread)
{
    const test::FakeBundle bundle;
    int error = 7;
    bool flag = false;
    EXPECT_FALSE(CPDFNewVipSdkWrap::Login(L"u", L"p", error, flag)) << "not started";
    EXPECT_EQ(error, 7) << "left alone";

    std::atomic<bool> reported{false};
    scriptedSdk().report = [&, test = std::this_thread::get_id()](const std::wstring &event, const auto &) {
        reported = event == L"event" && std::this_thread::get_id() != test;
    };
    EXPECT_TRUE(CPDFNewVipSdkWrap::InitInstance());
    VipSdkWrapper::GetVipTelemInterface()->SendTelemData(new VipTelemData(L"event"));
    EXPECT_TRUE(test::eventually([&] { return reported.load(); }));
    EXPECT_TRUE(CPDFNewVipSdkWrap::UnInitInstance());
    EXPECT_EQ(scriptedSdk().calls, (Calls{"prepare product information", "start core", "stop core"}));
}
