#include "runtime/MacGlobalUrl.h"

#include "tests/support/FakePlatform.h"

#include <endpoints.h>
#include <gtest/gtest.h>
#include <identity.h>

using U = MacGlobalUrl;

// What editions and packages answer otherwise is seen in real bundles.
TEST(MacGlobalUrl, MarkerMovesTheInternationalEditionAndIsAskedForOnce)
{
    const test::FakeBundle bundle;
    bundle.writeGlobalFile("[common]\napp_international=1\n");
    const std::string marker = bundle.makeUserDataDir() + product::kTestServerMarker.str();
    test::writeFile(marker, "");
    EXPECT_TRUE(IsInternationalUseTestServer());
    std::filesystem::remove(marker);

    const std::string host = product::endpoints::kDefSvrHost[masked::Edition::internationalTest].str();
    bool isTest = false;
    EXPECT_EQ(U::GetDefSvrHost(&isTest), host);
    EXPECT_TRUE(isTest);
    EXPECT_EQ(U::GetDefSvrHostW(nullptr), std::wstring(host.begin(), host.end()));
    const std::string help = U::GetHelpHtmlUrlA();
    EXPECT_EQ(U::GetHelpHtmlUrl(), std::wstring(help.begin(), help.end()));
    EXPECT_EQ(U::GetCloudCNDUrl("a b"), U::GetCloudCDNHost() + "a b") << "nothing between, nothing escaped";
}
