#include "account/CPDFVipSdkAdapter.h"

#include "config/ProductCfgUtil.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

/// The product is read once per process, hence one setting per case.
class AccountProduct : public testing::Test
{
protected:
    void write(const std::string &name, const std::string &content) const
    {
        test::writeFile(m_bundle / ("Foo.app/Contents/Resources/cfgdata/" + name), content);
    }

    [[nodiscard]] static int current() { return CPDFVipSdkAdapter::getCurrentVipSdkId(); }

    const test::FakeBundle m_bundle;
};

} // namespace

TEST_F(AccountProduct, DefaultFollowsTheBrand)
{
    EXPECT_EQ(current(), 13);
    EXPECT_EQ(SingleTon<ProductCfgUtil>::GetInstance()->getServiceAppId(), 23);
}

TEST_F(AccountProduct, TolvaHasOneOfItsOwn)
{
    write("componentConfig.ini", "[product]\nis_tv_product=1\nocr_app_id=1\nocr_app_id_tolva=2\n");
    EXPECT_EQ(current(), 103);
    EXPECT_EQ(SingleTon<ProductCfgUtil>::GetInstance()->getServiceAppId(), 2);
}

TEST_F(AccountProduct, UnknownOneBecomesTolvaForGood)
{
    write("cfgdata.ini.user", "[account]\naccount=42\n");
    EXPECT_EQ(current(), 103);
    write("cfgdata.ini.user", "[account]\naccount=13\n");
    EXPECT_EQ(current(), 103);
}

TEST_F(AccountProduct, IsStoredAndKept)
{
    CPDFVipSdkAdapter::setCurrentVipSdkId(vip_sdk::PRODUCT_ID_PDF);
    write("cfgdata.ini.user", "[account]\naccount=103\n");
    EXPECT_EQ(current(), 13) << "the file is not read again";
    CPDFVipSdkAdapter::setCurrentVipSdkId(static_cast<vip_sdk::PRODUCT_ID>(5));
    EXPECT_EQ(test::readFile(m_bundle / "Foo.app/Contents/Resources/cfgdata/cfgdata.ini.user"),
              "[account]\naccount=5\n");
    EXPECT_EQ(current(), 103);
}
