#include "account/CPDFNewVipSdkAdapter.h"
#include "tests/fuzz/Target.h"
#include "tests/support/ScriptedSdk.h"

/// Whatever the account service says of the user, it is read as far as it has the expected shape, and given back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    test::ScriptedSdk &sdk = test::scriptedSdk();
    sdk.loggedIn = true;
    sdk.userInfoJson = std::wstring(data, data + size);
    if (size > 2 && data[0] % 4 == 0) // other planes, surrogates and what is no code point
        (*sdk.userInfoJson)[size / 2] |= wchar_t(data[1]) << data[2] % 16;
    static auto &adapter = *new CPDFNewVipSdkAdapter(vip_sdk::PRODUCT_ID_PDF); // and the services that it started
    IPDFVipSdkAdapter::LocalUserInfo info;
    vip_sdk::UserInfo user;
    require(adapter.GetLocalUserInfo(info) && adapter.GetUserInfo(user) && user.token == info.token);
    require(sdk.stringsGiven == 0);
    static_cast<void>(adapter.IsAnonymous());
    return 0;
}
