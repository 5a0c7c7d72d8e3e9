#include "runtime/MacGlobalUrl.h"

#include "tests/support/FakePlatform.h"

#include <QString>
#include <endpoints.h>
#include <gtest/gtest.h>
#include <identity.h>

using namespace product::endpoints;

using masked::Edition;
using U = MacGlobalUrl;

namespace {

std::string narrowed(const std::wstring &text)
{
    return QString::fromStdWString(text).toStdString();
}

} // namespace

// What editions and packages answer otherwise is seen in real bundles.
TEST(MacGlobalUrl, MarkerMovesTheInternationalEditionAndIsAskedForOnce)
{
    const test::FakeBundle bundle;
    bundle.writeGlobalFile("[common]\napp_international=1\n");
    const std::string marker = bundle.makeUserDataDir() + product::kTestServerMarker.str();
    test::writeFile(marker, "");
    EXPECT_TRUE(IsInternationalUseTestServer());
    std::filesystem::remove(marker);

    constexpr Edition edition = Edition::internationalTest;
    const std::string host = kDefSvrHost[edition].str();
    bool isTest = false;
    EXPECT_EQ(U::GetDefSvrHost(&isTest), host);
    EXPECT_TRUE(isTest);
    EXPECT_EQ(narrowed(U::GetDefSvrHostW(nullptr)), host);
    EXPECT_EQ(U::GetOfficialOcrInfoSvrUrl(), host + kOfficialOcrInfoPath[edition].str());
    EXPECT_EQ(U::GetCloudCNDUrl("a b"), U::GetCloudCDNHost() + "a b") << "nothing between, nothing escaped";
    EXPECT_EQ(narrowed(U::GetHelpHtmlUrl()), U::GetHelpHtmlUrlA());
    EXPECT_EQ(U::GetHassleFreeServiceUrl(), kHassleFreeServiceUrl[edition].str() + "?productId=502");
}
