#include "account/CPDFVipSdkAdapter.h"

#include "config/ProductCfgUtil.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/OwnProcess.h"

#include <gtest/gtest.h>

TEST(AccountProduct, IsReadOnceAndStored)
{
    const test::FakeBundle bundle;
    const std::string folder = bundle / "Foo.app/Contents/Resources/cfgdata/", store = folder + "cfgdata.ini.user";
    const auto current = [] { return CPDFVipSdkAdapter::getCurrentVipSdkId(); };
    EXPECT_TRUE(test::succeedsInOwnProcess([&] {
        test::writeFile(folder + "componentConfig.ini",
                        "[product]\nis_tv_product=1\nocr_app_id=1\nocr_app_id_tolva=2\n");
        EXPECT_EQ(current(), 103) << "the brand's own";
        EXPECT_EQ(SingleTon<ProductCfgUtil>::GetInstance()->getServiceAppId(), 2);
    }));
    EXPECT_TRUE(test::succeedsInOwnProcess([&] {
        test::writeFile(store, "[account]\naccount=42\n");
        EXPECT_EQ(current(), 103) << "unknown";
        test::writeFile(store, "[account]\naccount=13\n");
        EXPECT_EQ(current(), 103) << "for good";
    }));
    CPDFVipSdkAdapter::setCurrentVipSdkId(vip_sdk::PRODUCT_ID_PDF);
    test::writeFile(store, "[account]\naccount=103\n");
    EXPECT_EQ(current(), 13) << "the file is not read again";
    CPDFVipSdkAdapter::setCurrentVipSdkId(static_cast<vip_sdk::PRODUCT_ID>(5));
    EXPECT_EQ(test::readFile(store), "[account]\naccount=5\n");
    EXPECT_EQ(current(), 103);
}
