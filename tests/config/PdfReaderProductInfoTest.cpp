#include "config/PdfReaderProductInfo.h"

#include "config/CPDFEdition.h"
#include "config/CPDFEditionRegKey.h"
#include "config/CPDFProductUtil.h"
#include "config/InstallTime.h"
#include "config/InstallationId.h"
#include "config/ProductInfoForCooperation.h"
#include "tests/support/FakePlatform.h"

#include <QRegularExpression>
#include <gtest/gtest.h>
#include <identity.h>

namespace fs = std::filesystem;

using test::fakePlatform;

namespace {

class Identity : public testing::Test
{
protected:
    [[nodiscard]] std::string server() const { return m_bundle / "Foo.app/Contents/Resources/ressrc/chs/upnest.svr"; }

    void writeRegistry(const std::string &values) const
    {
        test::writeFile(m_bundle / "support/Foo/reg/common.ini", "[product]\n" + values);
    }

    const test::FakeBundle m_bundle;
};

ProductInfo recordOf(int edition)
{
    return ProductInfoHelper(static_cast<PDFEdition::EDITION>(edition)).GetProductInfo();
}

constexpr char kRegistry[] = "tid1=1\ntid2=2\ntod1=3\ntod2=-4\niid=5\npid=6\ntryno=7\ninstalltime=4102444800\n"
                             "uuid=a,b\nsvrid=\"s, t\"\n";

} // namespace

TEST_F(Identity, IsEmptyWithoutARegistry)
{
    const PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    EXPECT_EQ(info->GetTid1(), 0);
    EXPECT_EQ(info->GetInstallTime(), 0);
    EXPECT_EQ(info->GetUUID(), "");
    EXPECT_EQ(info->GetTotalFileVersion(), 0);
    EXPECT_TRUE(info->IsIndependentEdition());
    EXPECT_FALSE(fs::exists(m_bundle / "support")) << "reading creates nothing";
}

TEST_F(Identity, RecordIsLoadedOnce)
{
    writeRegistry(kRegistry);
    fakePlatform().info[m_bundle / "Foo.app/Contents/Info.plist"]["CFBundleShortVersionString"] = "2.5.31";
    const PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    writeRegistry("tid1=9\ntryno=9\n");
    EXPECT_EQ(info->GetTid1(), 1);
    EXPECT_EQ(info->GetTod2(), -4);
    EXPECT_EQ(info->GetWTod2(), L"-4");
    EXPECT_EQ(info->GetInstallTime(), 4102444800) << "past 32 bits";
    EXPECT_EQ(info->GetUUID(), "a,b");
    EXPECT_EQ(info->GetSvrid(), "s, t");
    EXPECT_EQ(info->GetFileVersion(), 31);
    EXPECT_EQ(info->GetTotalFileVersion(), 2050031);
    EXPECT_EQ(info->GetTryNo(), 7);
    EXPECT_EQ(CPDFEdition::GetInstance()->GetTryNo(), 9) << "this one follows";
}

TEST_F(Identity, EditionsTakeTheirNumbersFromTheirSource)
{
    writeRegistry(kRegistry);
    test::writeFile(server(), "[Common]\ntid1=11\nproduct_id=x\nTryNo=17\nuuid_reg=\n");
    for (const int edition : {0, 1, 2, 3, 4, 8}) {
        EXPECT_EQ(recordOf(edition).tid1, 1) << edition;
        EXPECT_EQ(recordOf(edition).tryNo, 7) << edition;
    }
    const ProductInfo partner = recordOf(5);
    EXPECT_EQ(partner.tid1, 11);
    EXPECT_EQ(partner.pid, 0) << "no number";
    EXPECT_EQ(partner.tryNo, 17);
    EXPECT_EQ(partner.tid2, 2) << "not in the server file";
    EXPECT_EQ(partner.uuid, "a,b") << "no registry key is named";
    test::writeFile(server(), "");
    EXPECT_EQ(recordOf(5).uuid, "") << "the default key is that of a registry which is not here";
}

TEST_F(Identity, TryNumberIsWrittenAndNothingElse)
{
    const std::string before = "; kept\r\n[Common]\r\nuuid_reg=CLSID\\{A}\\b, c\r\nTryNo=5\r\n";
    test::writeFile(server(), before + "chan_name=ü\r\n");
    PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    info->SetTryNo(3070);
    EXPECT_EQ(test::readFile(server()), before.substr(0, before.size() - 3) + "3070\r\nchan_name=ü\r\n");
    EXPECT_EQ(info->GetTryNo(), 0);
    EXPECT_EQ(ProductInfoForCooperation().GetTryNo(1), 3070);
    fs::remove(server());
    fs::create_directory(server());
    info->SetTryNo(1);
    EXPECT_TRUE(fs::is_empty(server()));
}

TEST_F(Identity, OtherProductsAreFoundByTheirIdentifier)
{
    fakePlatform().installedApplications = {product::kLumoApp.str(), product::kXunduApp.str()};
    const PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    EXPECT_TRUE(info->IsHasLumo());
    EXPECT_FALSE(info->IsHasLumopdf());
    EXPECT_TRUE(info->IsHasXundu());
    EXPECT_FALSE(info->IsHasHarbo());
}

TEST(InstallTime, CountsCalendarDays)
{
    const QDateTime now(QDate(2026, 11, 21), QTime(0, 0, 1));
    const qint64 seconds = now.toSecsSinceEpoch();
    constexpr qint64 furthest = std::numeric_limits<qint64>::max();
    const std::pair<qint64, int> rows[] = {
        {seconds, 1},          {seconds - 1, 1}, {seconds - 2, 2}, // before midnight
        {seconds + 86'398, 1}, // later today
        {seconds + 86'399, 0}, {furthest, 0},
    };
    for (const auto &[time, days] : rows)
        EXPECT_EQ(installDays(time, now), days) << time - seconds;
    EXPECT_EQ(installDays(0, now), QDateTime::fromSecsSinceEpoch(0).daysTo(now) + 1);
    EXPECT_GT(installDays(-furthest, now), 4'000'000);
    EXPECT_EQ(PdfReaderProductInfo::SecondToDays(86'399), 0U);
    EXPECT_EQ(PdfReaderProductInfo::SecondToDays(86'400), 1U);
}

TEST(InstallationId, PiecesHaveTheFormOfTheIdsThatExist)
{
    using namespace installation_id;
    EXPECT_EQ(randomPiece(42), "00042ld");
    EXPECT_EQ(randomPiece(2147483647), "2147483647ld");
    EXPECT_EQ(uuidPiece(QUuid("{0a0b0c0d-00ef-4abc-80fe-0000000000ff}")), "4ABC00EF0A0B0C0D00EF4abc80FE0000000000FF");
    EXPECT_EQ(uuidPiece(QUuid("{0000000d-0000-0000-0000-000000000000}")), "0000000D000000000000000000000000");
    EXPECT_EQ(timePiece(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 8))),
              "0080604202605"
              "0703");
    EXPECT_EQ(hostPiece(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(hostPiece("ü"), "c03410a5204b21cd8229ff754688d743");
    EXPECT_EQ(diskPiece(1234), "0000001234");
    EXPECT_EQ(diskPiece(123456789012), "123456789012");
}

TEST_F(Identity, InstallationIdsDiffer)
{
    const QRegularExpression form("^[0-9a-f]{32}$");
    const QString first = ProductInfoForCooperation::AssmbleUUID();
    EXPECT_TRUE(form.match(first).hasMatch()) << first.toStdString();
    EXPECT_NE(first, ProductInfoForCooperation::AssmbleUUID());
}

TEST_F(Identity, CooperationTextsAreThoseOfTheFile)
{
    const ProductInfoForCooperation missing;
    EXPECT_EQ(missing.GetTid1(7), 7);
    EXPECT_EQ(missing.GetChanName("x"), "x");
    EXPECT_EQ(missing.GetUUIDKey(), "uuid");
    EXPECT_EQ(missing.GetUUIDReg(),
              R"(CLSID\{A1312CA7-7421-44a4-A51F-F1088A6012E1}\Implemented Categories\)"
              "{857E7E92-0F3E-482a-906C-4ED8F19A7FE3}");
    EXPECT_EQ(missing.GetUUID("d"), "");
    test::writeFile(server(), "[Common]\nuuid_reg=\nswitch_generate_uuid=1\nchan_name=a\\{b}, c\n");
    const ProductInfoForCooperation info;
    EXPECT_EQ(info.GetUUID("d"), "d");
    EXPECT_EQ(info.GetSvrid("e"), "e");
    EXPECT_EQ(info.GetChanName(""), "a\\{b}, c");
    EXPECT_FALSE(info.GenerateUUID(nullptr, "x"));
    EXPECT_EQ(info.GetUUIDRootKety(), 0);
}

TEST(CPDFEdition, FoldersAreFilledOncePerInitialization)
{
    const test::FakeBundle bundle("Foo.app/Contents/Library/Bar.app/Contents/MacOS/bar");
    CPDFEdition *edition = CPDFEdition::GetInstance();
    const auto dir = [edition] { return QString::fromStdWString(edition->GetPDFDir()).toStdString(); };
    EXPECT_EQ(dir(), "");
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    const std::string first = bundle / "Foo.app/Contents/Library/Bar.app/Contents/MacOS/";
    EXPECT_EQ(dir(), first);
    EXPECT_EQ(QString::fromStdWString(edition->GetParentAppDir()).toStdString(), bundle / "Foo.app/Contents/MacOS/");
    EXPECT_EQ(edition->GetPdfConstCfgPath(), edition->GetPDFDir() + L"pdfconstcfg.dat");
    EXPECT_EQ(edition->GetEditionNamePrefix(), L"vantpdf");
    EXPECT_EQ(edition->GetEdition(), PDFEdition::Independent) << "not the argument";

    fakePlatform().bundleExecutablePath = "/elsewhere/bar";
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    EXPECT_EQ(dir(), first);
    edition->Uninitialize();
    EXPECT_EQ(dir(), first);
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    EXPECT_EQ(dir(), "/elsewhere/");
}

TEST(CPDFEdition, OutsideABundleTheParentIsTheOwnFolder)
{
    const test::FakeBundle bundle("bin/tool");
    CPDFEdition::GetInstance()->Initialize(PDFEdition::Independent);
    EXPECT_EQ(QString::fromStdWString(CPDFEdition::GetInstance()->GetParentAppDir()).toStdString(), bundle / "bin/");
}

TEST_F(Identity, EditionEightIsNotTheInternationalSwitch)
{
    test::writeFile(m_bundle / "Foo.app/Contents/Resources/cfgdata/componentConfig.ini",
                    "[product]\nproduct_edition=8\n");
    EXPECT_TRUE(CPDFEdition::GetInstance()->IsInternationEdition());
    EXPECT_FALSE(PdfReaderProductInfo::GetInstance()->IsInternationEdition());
    EXPECT_FALSE(CPDFProductUtil().IsNeedTranferIndependentReader());
}

TEST(CPDFEditionRegKey, SucceedsWithoutEffect)
{
    CPDFEditionRegKey key(PDFEdition::Independent, true);
    std::uint32_t number = 7;
    std::wstring text = L"x";
    EXPECT_EQ(key.Open(L"a") | key.QueryDWORDValue(L"b", number) | key.QueryStringValue(L"c", text), 0);
    EXPECT_EQ(number, 7U);
    EXPECT_EQ(text, L"x");
}
