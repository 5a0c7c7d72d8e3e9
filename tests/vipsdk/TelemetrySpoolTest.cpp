#include "tests/vipsdk/TestStore.h"
#include "vipsdk/include/ProductInfoMgr.h"
#include "vipsdk/include/VipSdkTeleM3rdImpl.h"
#include "vipsdk/include/VipTelemData.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <sstream>
#include <thread>
#include <vector>

TEST(TelemetrySpool, KeepsTheLinesOfManyWholeWhateverWasThere)
{
    const test::TestStore store;
    test::writeFile(store.path("product.ini"), "[product]\ntid1=1\npid=44\nuuid=u\n");
    test::writeFile(store.path("telemetry.jsonl"), R"({"a piece of a li)");
    ProductInfoMgr::GetInstance()->Initialize();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            vip_sdk::VipSdkTeleM3rdImpl telemetry;
            telemetry.SendTelemData(nullptr);
            for (int record = 0; record < 50; ++record)
                telemetry.SendTelemData(new VipTelemData(L"line\n\u00fc"));
        });
    for (std::thread &thread : threads)
        thread.join();

    std::istringstream lines(test::readFile(store.path("telemetry.jsonl")));
    std::string line;
    std::getline(lines, line);
    int count = 0;
    while (std::getline(lines, line)) {
        const QJsonObject record = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
        ASSERT_EQ(record["event"].toString(), QString::fromUtf8("line\n\u00fc")) << line;
        ASSERT_EQ(record["product"].toObject()["pid"].toInt(), 44) << line;
        ++count;
    }
    EXPECT_EQ(count, 200);
}
