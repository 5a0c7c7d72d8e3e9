#include "config/PdfReaderProductInfo_p.h"

#include "config/CPDFEdition.h"
#include "config/InstallationId_p.h"
#include "config/ProductInfoForCooperation.h"
#include "tests/support/FakePlatform.h"

#include <QRegularExpression>
#include <gtest/gtest.h>
#include <identity.h>

namespace fs = std::filesystem;

using test::fakePlatform;

namespace {

struct Identity : testing::Test
{
    const test::FakeBundle m_bundle;
    const std::string m_server = m_bundle / "Foo.app/Contents/Resources/ressrc/chs/upnest.svr";
};

std::string narrow(const std::wstring &text)
{
    return QString::fromStdWString(text).toStdString();
}

} // namespace

TEST_F(Identity, RecordIsThatOfTheStartAndTheMachine)
{
    m_bundle.writeRegistry("tid1=1\ntod2=-4\ntryno=7\ninstalltime=4102444800\nuuid=a,@b\nsvrid=@ByteArray(s\\t)\n");
    fakePlatform().installedApplications = {product::kLumoApp.str(), product::kXunduApp.str()};
    fakePlatform().info[m_bundle / "Foo.app/Contents/Info.plist"]["CFBundleShortVersionString"] = "2.5.31";
    const PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    m_bundle.writeRegistry("tid1=9\ntryno=9\n");
    EXPECT_EQ(info->GetTid1(), 1);
    EXPECT_EQ(info->GetInstallTime(), 4102444800) << "past 32 bits";
    EXPECT_EQ(info->GetUUID(), "a,@b") << "read as a list of two kinds";
    EXPECT_EQ(info->GetSvrid(), "s\t") << "stored as bytes";
    EXPECT_EQ(info->GetTotalFileVersion(), 2050031);
    EXPECT_EQ(info->GetTryNo(), 7);
    EXPECT_EQ(CPDFEdition::GetInstance()->GetTryNo(), 9) << "this one follows";
    EXPECT_TRUE(info->IsHasLumo() && info->IsHasXundu() && !info->IsHasLumopdf() && !info->IsHasHarbo());
}

TEST_F(Identity, PartnersNumbersAreThoseOfTheServerFile)
{
    const ProductInfoForCooperation missing;
    EXPECT_EQ(missing.GetTid1(7), 7);
    EXPECT_EQ(missing.GetUUID("d"), "") << "the default key is that of a registry which is not here";

    test::writeFile(m_server,
                    "[Common]\ntid1=11\nproduct_id=x\nTryNo=17\nuuid_reg=\nswitch_generate_uuid=1\n"
                    "chan_name=a\\{b}, c\n");
    const ProductInfoForCooperation info;
    EXPECT_EQ(info.GetSvrid("e"), "e");
    EXPECT_EQ(info.GetChanName(""), "a\\{b}, c");
    EXPECT_FALSE(info.GenerateUUID(nullptr, "x"));

    m_bundle.writeRegistry("tid1=1\ntid2=2\npid=6\ntryno=7\nuuid=a,b\n");
    EXPECT_EQ(ProductInfoHelper(PDFEdition::International).GetProductInfo().tid1, 1);
    const ProductInfo partner = ProductInfoHelper(PDFEdition::Cooperation).GetProductInfo();
    EXPECT_EQ(partner.tid1, 11);
    EXPECT_EQ(partner.pid, 0) << "no number";
    EXPECT_EQ(partner.tid2, 2) << "not in the server file";
    EXPECT_EQ(partner.uuid, "a,b") << "no registry key is named";
}

TEST_F(Identity, TryNumberIsWrittenAndNothingElse)
{
    const std::string before = "; kept\r\n[Common]\r\nuuid_reg=CLSID\\{A}\\b, c\r\nTryNo=5\r\n";
    test::writeFile(m_server, before + "chan_name=ü\r\n");
    PdfReaderProductInfo *info = PdfReaderProductInfo::GetInstance();
    info->SetTryNo(3070);
    EXPECT_EQ(test::readFile(m_server), before.substr(0, before.size() - 3) + "3070\r\nchan_name=ü\r\n");
    EXPECT_EQ(info->GetTryNo(), 0) << "the record stays";
    EXPECT_TRUE(fs::is_empty(m_bundle / "support/Foo/reg")) << "to open a key makes the folder, and nothing else";
}

TEST(InstallTime, CountsCalendarDays)
{
    const QDateTime now(QDate(2026, 11, 21), QTime(0, 0, 1));
    constexpr qint64 furthest = std::numeric_limits<qint64>::max() / 2;
    const std::pair<qint64, int> rows[] = {{0, 1}, {-1, 1}, {-2, 2}, {86'398, 1}, {86'399, 0}, {furthest, 0}};
    for (const auto &[seconds, days] : rows)
        EXPECT_EQ(installDays(now.toSecsSinceEpoch() + seconds, now), days) << seconds;
}

TEST_F(Identity, InstallationIdsHaveTheFormOfThoseThatExist)
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

TEST(CPDFEdition, FoldersAreFilledOncePerInitialization)
{
    const test::FakeBundle bundle("Foo.app/Contents/Library/Bar.app/Contents/MacOS/bar");
    bundle.writeGlobalFile("[common]\napp_international=1\n");
    CPDFEdition *edition = CPDFEdition::GetInstance();
    const auto dir = [edition] { return narrow(edition->GetPDFDir()); };
    const std::string first = bundle / "Foo.app/Contents/Library/Bar.app/Contents/MacOS/";
    EXPECT_EQ(dir(), "");
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    EXPECT_EQ(dir(), first);
    EXPECT_EQ(narrow(edition->GetParentAppDir()), bundle / "Foo.app/Contents/MacOS/");
    EXPECT_EQ(edition->GetEdition(), PDFEdition::Independent) << "not the argument";
    EXPECT_FALSE(edition->IsInternationEdition()) << "not the switch";

    fakePlatform().bundleExecutablePath = "/elsewhere/bar";
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    edition->Uninitialize();
    EXPECT_EQ(dir(), first);
    EXPECT_TRUE(edition->Initialize(PDFEdition::Harbo));
    EXPECT_EQ(dir(), "/elsewhere/");
}

TEST_F(Identity, EditionEightIsNotTheInternationalSwitch)
{
    test::writeFile(m_bundle / "Foo.app/Contents/Resources/cfgdata/componentConfig.ini",
                    "[product]\nproduct_edition=8\n");
    EXPECT_TRUE(CPDFEdition::GetInstance()->IsInternationEdition());
    EXPECT_FALSE(PdfReaderProductInfo::GetInstance()->IsInternationEdition());
}

TEST(CPDFEdition, OutsideABundleTheParentIsTheOwnFolder)
{
    const test::FakeBundle bundle("bin/tool");
    CPDFEdition::GetInstance()->Initialize(PDFEdition::Independent);
    EXPECT_EQ(narrow(CPDFEdition::GetInstance()->GetParentAppDir()), bundle / "bin/");
}
