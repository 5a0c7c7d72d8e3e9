#include "config/ProductCfgUtil.h"

#include "runtime/MacGlobalUrl.h"
#include "tests/support/Eventually.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>
#include <identity.h>

namespace {

/// A bundle with a component configuration and an updater's server file.
struct Product : testing::Test
{
    static const ProductCfgUtil &cfg() { return *SingleTon<ProductCfgUtil>::GetInstance(); }

    const test::FakeBundle m_bundle;
    const std::string m_component = m_bundle / "Foo.app/Contents/Resources/cfgdata/componentConfig.ini";
    const std::string m_server = m_bundle / "Foo.app/Contents/Resources/ressrc/chs/upnest.svr";
};

} // namespace

TEST_F(Product, ComponentConfigurationIsUtf8AndServerFileWins)
{
    test::writeFile(m_component,
                    "\xEF\xBB\xBF[product]\r\nproduct_edition=1\r\nproduct_name=Ünder, & Söhne\r\nis_tv_product=2\r\n"
                    "is_help_enable=no\r\nhost=https://h.example\r\n"
                    "[associate]\r\navoid=a|b, c||d|\r\n[product]\r\nvip_id=5\r\n");
    test::writeFile(m_server, "[Common]\nEdition=4\n");
    EXPECT_EQ(cfg().getProductEdition(), 4);
    EXPECT_EQ(cfg().getProductName(), "Ünder, & Söhne");
    EXPECT_TRUE(cfg().isTolvaProduct());
    EXPECT_FALSE(cfg().getHelpEnable()) << "no number reads as 0";
    EXPECT_EQ(cfg().getVipId(), 5) << "of the second section of this name";
    EXPECT_EQ(cfg().getProductHost(), "https://h.example");
    EXPECT_EQ(cfg().getAssociateAvoid(), (QStringList{"a", "b, c", "d"}));
    EXPECT_EQ(cfg().getProductGUID(), "{9567A644-0B88-4A00-B45E-B1D8F8F67710}");
}

TEST_F(Product, TestServerGoesBeforeTheConfiguredHost)
{
    m_bundle.writeGlobalFile("[common]\napp_international=1\n");
    const std::string marker = m_bundle.makeUserDataDir() + product::kTestServerMarker.str();
    test::writeFile(marker, "");
    EXPECT_TRUE(IsInternationalUseTestServer());
    std::filesystem::remove(marker); // which was asked for once and for all
    test::writeFile(m_component, "[product]\nhost=https://h.example\n");
    test::writeFile(m_server, "[Common]\nTryNo=1\n");
    EXPECT_EQ(cfg().getProductHost().toStdString(), MacGlobalUrl::GetDefSvrHost(nullptr));
    EXPECT_EQ(cfg().getProductEdition(), 3) << "the server file has none";
    EXPECT_EQ(cfg().getOfficalUrl().toStdWString(), MacGlobalUrl::GetOfficeWebsiteUrl());
}

TEST_F(Product, MayBeAskedFromManyThreads)
{
    std::string content = "[product]\nproduct_name=a, b\n";
    for (int i = 0; i < 600; ++i) // more than are remembered
        content += std::to_string(i) + "=" + std::to_string(i) + "\n";
    test::writeFile(m_component, content);
    test::onThreads(4, [](int) {
        for (int i = 0; i < 600; ++i)
            EXPECT_EQ(cfg().getIntValue("product", QString::number(i), -1), i);
        EXPECT_EQ(cfg().getProductName(), "a, b");
    });
}

TEST_F(Product, ParserFallsBackOnlyWhereNothingStands)
{
    struct Filled : ProductCfgParser
    {
        Filled() : ProductCfgParser(Reader) { m_settings["s"] = {{"number", "12"}, {"text", "abc"}, {"empty", ""}}; }
    };
    const Filled parser;
    EXPECT_EQ(parser.GetIntValue("s", "number", 7), 12);
    EXPECT_FALSE(parser.GetBoolValue("s", "text", true)) << "0, not the default";
    EXPECT_EQ(parser.GetIntValue("s", "empty", 7), 7);
    EXPECT_EQ(parser.GetIntValue("S", "number", 7), 7) << "names are case-sensitive";
    EXPECT_EQ(parser.GetStringValue("s", "", "d"), "d");
    EXPECT_EQ(ProductCfgParser(ProductCfgParser::Reader).Init(PDFEdition::Independent, "", ""), 0);

    test::writeFile(m_server, "[Common]\nchan_name=vänt %1\n");
    EXPECT_EQ(parser.GetEditionNode(PDFEdition::Cooperation, "x"), "product_vänt %1");
    EXPECT_EQ(parser.GetEditionNode(PDFEdition::Independent, "x"), "");
}
