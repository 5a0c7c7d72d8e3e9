#include "config/PdfReaderProductInfo_p.h"

#include "config/CPDFEdition.h"
#include "config/InstallationId_p.h"
#include "config/ProductCfgUtil.h"
#include "config/ProductInfoForCooperation.h"
#include "paths/PathUtils.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/Concurrency.h"
#include "tests/support/FakePlatform.h"

#include <QRegularExpression>
#include <gtest/gtest.h>
#include <identity.h>

/// A bundle with a component configuration and an updater's server file.
struct Product : testing::Test
{
    static const ProductCfgUtil &cfg() { return *SingleTon<ProductCfgUtil>::GetInstance(); }

    const test::FakeBundle m_bundle;
    const std::string m_component = m_bundle / "Foo.app/Contents/Resources/cfgdata/componentConfig.ini";
    const std::string m_server = m_bundle / "Foo.app/Contents/Resources/ressrc/chs/upnest.svr";
};

TEST_F(Product, ComponentConfigurationIsUtf8AndServerFileWins)
{
    test::writeFile(m_component,
                    "\xEF\xBB\xBF[product]\r\nproduct_edition=1\r\nproduct_name=Ünder, & Söhne\r\nis_tv_product=2\r\n"
                    "is_help_enable=no\r\nhost=https://h.example\r\n"
                    "[associate]\r\navoid=a|b, c||d|\r\n[product]\r\nvip_id=5\r\n"
                    "[title]\r\ntop_left_title=Über\r\n[about]\r\ncopyright=© wir\r\n");
    test::writeFile(m_server, "[Common]\nEdition=8\n");
    test::onThreads(4, [](int) {
        EXPECT_TRUE(cfg().isTolvaProduct());
        EXPECT_FALSE(cfg().getHelpEnable()) << "no number reads as 0";
        EXPECT_EQ(cfg().getProductName() + cfg().getProductHost(), "Ünder, & Söhnehttps://h.example");
        EXPECT_EQ(cfg().getAssociateAvoid(), (QStringList{"a", "b, c", "d"}));
        EXPECT_EQ(cfg().getProductGUID(), "{9567A644-0B88-4A00-B45E-B1D8F8F67710}");
        for (int i = 0; i < 600; ++i) { // more than are remembered
            EXPECT_EQ(cfg().getIntValue("s", QString::number(i), i), i);
            EXPECT_EQ(cfg().getVipId(), 5) << "of the second section of this name";
        }
    });
    EXPECT_EQ(cfg().getProductEdition(), 8);
    EXPECT_EQ(PdfReaderProductInfo::GetInstance()->GetTopLeftTitle() + cfg().getCopyRight(), "Über© wir");
    EXPECT_TRUE(CPDFEdition::GetInstance()->IsInternationEdition()) << "by its number";
    EXPECT_FALSE(PdfReaderProductInfo::GetInstance()->IsInternationEdition()) << "by the switch";
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
    EXPECT_FALSE(CPDFEdition::GetInstance()->IsInternationEdition()) << "by its number, whatever the switch says";
    EXPECT_EQ(cfg().getOfficalUrl().toStdWString(), MacGlobalUrl::GetOfficeWebsiteUrl());
}

TEST_F(Product, ParserFallsBackOnlyWhereNothingStands)
{
    struct Filled : ProductCfgParser
    {
        Filled() : ProductCfgParser(Reader) { m_settings["s"] = {{"number", "12"}, {"text", "abc"}, {"empty", ""}}; }
    } const parser;
    EXPECT_EQ(parser.GetIntValue("s", "number", 7), 12);
    EXPECT_FALSE(parser.GetBoolValue("s", "text", true)) << "0, not the default";
    EXPECT_EQ(parser.GetIntValue("s", "empty", 7), 7);
    EXPECT_EQ(parser.GetIntValue("S", "number", 7), 7) << "names are case-sensitive";
    test::writeFile(m_server, "[Common]\nchan_name=vänt %1\n");
    EXPECT_EQ(parser.GetEditionNode(PDFEdition::Cooperation, "x"), "product_vänt %1");
    EXPECT_EQ(parser.GetEditionNode(PDFEdition::Independent, "x"), "");
}

TEST_F(Product, RecordIsThatOfTheStartAndTheMachine)
{
    m_bundle.writeRegistry("tid1=1\ntryno=7\ninstalltime=4102444800\nuuid=a,@b\nsvrid=@ByteArray(s\\t\\8)\n");
    test::fakePlatform().installedApplications = {product::kLumoApp.str(), product::kXunduApp.str()};
    test::fakePlatform().info[m_bundle / "Foo.app/Contents/Info.plist"]["CFBundleShortVersionString"] = "2.5.31";
    const PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    m_bundle.writeRegistry("tid1=9\ntryno=9\n");
    EXPECT_EQ(info->GetInstallTime(), 4102444800) << "past 32 bits";
    EXPECT_EQ(info->GetUUID() + info->GetSvrid(), "a,@bs\t") << "read as a list of two kinds, stored as bytes";
    EXPECT_EQ((std::vector{info->GetTid1(), info->GetTotalFileVersion(), info->GetFileVersion(), info->GetTryNo()}),
              (std::vector{1, 2050031, 31, 7}));
    EXPECT_EQ(CPDFEdition::GetInstance()->GetTryNo(), 9) << "this one follows";
    EXPECT_EQ((std::vector{info->IsHasLumo(), info->IsHasXundu(), info->IsHasLumopdf(), info->IsHasHarbo()}),
              (std::vector{true, true, false, false}));
}

TEST_F(Product, PartnersNumbersAreThoseOfTheServerFile)
{
    EXPECT_EQ(ProductInfoForCooperation().GetUUID("d"), "")
        << "the default key is that of a registry which is not here";
    test::writeFile(m_server, "[Common]\ntid1=11\ntod1=13\nproduct_id=x\nTryNo=17\nuuid_reg=\nchan_name=a\\{b}, c\n");
    const ProductInfoForCooperation info;
    EXPECT_EQ(info.GetSvrid("e"), "e");
    EXPECT_EQ(info.GetChanName(""), "a\\{b}, c");
    EXPECT_FALSE(info.GenerateUUID(nullptr, "x"));

    m_bundle.writeRegistry("tid1=1\ntid2=2\npid=6\ntryno=7\nuuid=a,b\n");
    EXPECT_EQ(ProductInfoHelper(PDFEdition::International).GetProductInfo().tid1, 1);
    const ProductInfo partner = ProductInfoHelper(PDFEdition::Cooperation).GetProductInfo();
    EXPECT_EQ((std::vector{partner.tid1, partner.tod1, partner.tryNo, partner.pid, partner.tid2}),
              (std::vector{11, 13, 17, 0, 2}))
        << "one that is no number, and one that is not in the server file, at the end";
    EXPECT_EQ(partner.uuid, "a,b") << "no registry key is named";
}

TEST_F(Product, TryNumberIsWrittenAndNothingElse)
{
    const std::string before = "; kept\r\n[Common]\r\nuuid_reg=CLSID\\{A}\\b, c\r\nTryNo=5\r\n";
    test::writeFile(m_server, before + "chan_name=ü\r\n");
    PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    info->SetTryNo(3070);
    EXPECT_EQ(test::readFile(m_server), before.substr(0, before.size() - 3) + "3070\r\nchan_name=ü\r\n");
    EXPECT_EQ(info->GetTryNo(), 0) << "the record stays";
    EXPECT_TRUE(std::filesystem::is_empty(m_bundle / "support/Foo/reg"))
        << "to open a key makes the folder, and nothing else";
}

TEST(InstallTime, CountsCalendarDays)
{
    const QDateTime now(QDate(2026, 11, 21), QTime(0, 0, 1));
    constexpr qint64 furthest = std::numeric_limits<qint64>::max() / 2;
    const std::pair<qint64, int> rows[] = {{0, 1}, {-1, 1}, {-2, 2}, {86'398, 1}, {86'399, 0}, {furthest, 0}};
    for (const auto &[seconds, days] : rows)
        EXPECT_EQ(installDays(now.toSecsSinceEpoch() + seconds, now), days) << seconds;
}

TEST_F(Product, InstallationIdsHaveTheFormOfThoseThatExist)
{
    using namespace installation_id;
    EXPECT_EQ(randomPiece(42), "00042ld");
    EXPECT_EQ(uuidPiece(QUuid("{0a0b0c0d-00ef-4abc-80fe-0000000000ff}")), "4ABC00EF0A0B0C0D00EF4abc80FE0000000000FF");
    EXPECT_EQ(timePiece(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 8))), "00806042026050703");
    EXPECT_EQ(hostPiece("ü") + diskPiece(1234), "c03410a5204b21cd8229ff754688d7430000001234");
    const QString first = ProductInfoForCooperation::AssmbleUUID();
    EXPECT_TRUE(QRegularExpression("^[0-9a-f]{32}$").match(first).hasMatch()) << first.toStdString();
    EXPECT_NE(first, ProductInfoForCooperation::AssmbleUUID());
}

TEST_F(Product, FoldersAreFilledOncePerInitialization)
{
    test::writeFile(m_component, "[product]\nproduct_edition=1\n");
    CPDFEdition *edition = CPDFEdition::GetInstance();
    const auto dir = [edition] { return QString::fromStdWString(edition->GetPDFDir()).toStdString(); };
    EXPECT_EQ(dir(), "");
    EXPECT_TRUE(edition->Initialize(PDFEdition::Wrenfix));
    EXPECT_EQ(dir(), m_bundle / "Foo.app/Contents/MacOS/");
    EXPECT_TRUE(edition->IsHarboEdition()) << "not the argument";
    EXPECT_EQ(PathUtils::getAppDataDirName().toStdString(), product::kHarboDataDirName.str());

    test::fakePlatform().bundleExecutablePath = "/elsewhere/bar";
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    edition->Uninitialize();
    EXPECT_EQ(dir(), m_bundle / "Foo.app/Contents/MacOS/");
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    EXPECT_EQ(dir(), "/elsewhere/");
    EXPECT_EQ(edition->GetParentAppDir(), QString::fromStdString(m_bundle / "Foo.app/Contents/MacOS/").toStdWString());
}
