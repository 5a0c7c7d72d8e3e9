#include "account/CPDFNewVipSdkWrap.h"
#include "account/CPDFRookVipSdkAdapter.h"
#include "account/CPDFVipSdkAdapter.h"
#include "account/OndVipGeneratorUtil.h"
#include "account/VipSdkInterfaceMgr.h"
#include "account/VipSdkTelemImpl.h"
#include "account/VipSdkWrapper.h"
#include "config/MacGlobalSetting.h"
#include "config/ProductCfgUtil.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/Concurrency.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/ScriptedSdk.h"
#include "vipsdk/include/IVipSdkTelemInterface.h"
#include "vipsdk/include/VipTelemData.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using test::scriptedSdk;
using vip_sdk::VipSdkWrapper;

using Info = IPDFVipSdkAdapter::LocalUserInfo;
using Page = IPDFVipSdkAdapter::VIP_GUI_PAGE;

constexpr auto kPrivilege = static_cast<IPDFVipSdkAdapter::VIP_PRIVILEGE>(4);

struct Account : testing::Test
{
    const test::FakeBundle m_bundle;
    CPDFVipSdkAdapter *const m_account = CPDFVipSdkAdapter::GetInstance();
};

struct Listener final : IPDFVipSdkAdapter::IUserInfoChangeCallBack
{
    void OnUserInfoChange(const Info &info) override { told += L"change " + info.nickname + L", "; }
    void OnLogoutForeverUserInfoChange(const Info &info) override { told += L"goodbye " + info.nickname + L", "; }

    std::wstring told;
};

/// What the operations answer, "y" or "n": nine that pass on what the SDK says, and four that do not; then the result
/// of LogoutForever().
static std::string answers(IPDFVipSdkAdapter &account)
{
    vip_sdk::UserInfo user;
    Info info;
    std::wstring certificate;
    QString text;
    int code = 7;
    bool flag = false;
    std::string all;
    for (const bool answer :
         {account.IsLogin(), account.GetUserInfo(user), account.GetLocalUserInfo(info),
          account.GetUserCertificate(certificate), account.Logout(), account.StartFrontTask(),
          account.LogoutForever(&code), account.SetUserInfo(L"a", L"b", L"c", L"d"),
          account.Login(L"u", L"p", code, flag), account.IsAnonymous(), account.IsLocalUserInfoHasKeyByCache({}),
          account.RefreshLocalUserInfoCache(), account.GetStrUserInfo(text)})
        all += answer ? 'y' : 'n';
    return all + std::to_string(code);
}

TEST_F(Account, CommandLinesTellPageAndChannel)
{
    const std::string web = "--open_web=main --pid=13 --vipfrom=7 -url=" + MacGlobalUrl::GetVipSvrHost();
    const std::tuple<const char *, int, int, bool, std::string> rows[] = {
        // try number, page, feature, log out for good, line
        {"7", 1, 9, false, "--open_web=login --pid=13 --vipfrom=7 --subpid=1 --fid=9"},
        {"7", 2, 9, true, "--open_web=main --pid=13 --vipfrom=7 --subpid=1 --fid=9 --logoutforever=1"},
        {"7", 3, 9, true, web + "/page/renew?tryno=7"},
        {"7", 10, 9, false, web + "/page/buy?tryno=7 --fid=9"},
        {"7", 10, 233, false, web + "/page/buy-conversion?tryno=7 --fid=233"},
        {"7", 6, 9, false, ""},
        {"3070", 11, 1, false, web + "/page/channel/redeem?tryno=3070 --fid=1"},
        {"05", 10, 233, false, web + "/page/channel/buy-conversion?tryno=5 --fid=233"},
    };
    CPDFRookVipSdkAdapter rook(vip_sdk::PRODUCT_ID_PDF);
    for (const auto &[tryNo, page, fid, logoutForever, line] : rows) {
        m_bundle.writeRegistry(std::string("tryno=") + tryNo + "\n");
        EXPECT_EQ(rook.GetOpenVipCommandLine(Page(page), 7, fid, logoutForever).toStdString(), line);
    }
    EXPECT_TRUE(rook.IsNeedCustomLoginPage(Page(1), 6031, 0));
    EXPECT_FALSE(rook.IsNeedCustomLoginPage(Page(2), 6031, 0));
}

TEST_F(Account, HelperGetsEveryPieceBetweenBlanks)
{
    const std::string helper = m_bundle / "Foo.app/Contents/MacOS/orvell-account", seen = m_bundle / "seen";
    CPDFNewVipSdkAdapter plain(vip_sdk::PRODUCT_ID_PDF);
    CPDFRookVipSdkAdapter rook(vip_sdk::PRODUCT_ID_PDF);
    const auto open = [](CPDFNewVipSdkAdapter &adapter, int page, bool logoutForever) {
        return adapter.OpenVipGUIPage(Page(page), 7, 9, logoutForever, kPrivilege);
    };
    EXPECT_FALSE(open(plain, 1, false)) << "no helper";
    test::writeFile(helper,
                    "#!/bin/sh\nprintf '[%s]' \"$@\" > '" + seen + ".new'\nmv '" + seen + ".new' '" + seen + "'\n");
    EXPECT_FALSE(open(plain, 1, false)) << "not executable";
    std::filesystem::permissions(helper, std::filesystem::perms::owner_all);
    const auto arguments = [&](bool opened) {
        EXPECT_TRUE(opened);
        EXPECT_TRUE(!opened || test::eventually([&] { return std::filesystem::exists(seen); }));
        std::string all = test::readFile(seen);
        std::filesystem::remove(seen);
        return all;
    };
    const std::string rest = "[--vipfrom=7][--subpid=1][--fid=9]";
    EXPECT_EQ(arguments(open(plain, 1, false)), "[--open_web=login][--pid=13][]" + rest);
    EXPECT_EQ(arguments(open(plain, 3, true)), "[--open_action=1][--pid=13][]" + rest + "[--logoutforever=1]");
    EXPECT_EQ(arguments(open(plain, 10, false)), "[--open_web=main][--pid=13][]" + rest);
    EXPECT_EQ(arguments(open(rook, 2, false)), "[--open_web=main][--pid=13]" + rest);
    EXPECT_FALSE(open(plain, 6, false));
    EXPECT_EQ(arguments(rook.RunVipProcess(QString::fromStdString(helper).toStdWString(), L"a\"b c\" 'd;$(e)  ")),
              "[a\"b][c\"]['d;$(e)][][]")
        << "no shell, no quoting";
}

TEST_F(Account, UserIsReadFromWhateverTheSdkAnswers)
{
    CPDFNewVipSdkAdapter adapter(vip_sdk::PRODUCT_ID_PDF);
    vip_sdk::UserInfo user;
    Info info;
    scriptedSdk().userInfoJson = L"{\"open_id\":\"o\",\"token\":\"t\",\"avatar\":\"v\",\"email\":\"e\","
                                 L"\"nickname\":\"\u00fc\U0001F600\",\"register_from\":3,\"is_logout\":true}";
    EXPECT_TRUE(adapter.GetUserInfo(user));
    EXPECT_TRUE(adapter.GetLocalUserInfo(info));
    EXPECT_EQ(user.avatar + user.token + user.open_id + user.nickname, L"vto\u00fc\U0001F600");
    EXPECT_EQ(info.avatar_text + info.email, "ve");
    EXPECT_EQ(std::pair(user.register_from, user.is_logout), std::pair(3, true));

    scriptedSdk().userInfoJson.reset();
    scriptedSdk().loggedIn = true;
    EXPECT_TRUE(adapter.IsAnonymous()) << "nothing can be read of the user";
    EXPECT_FALSE(adapter.GetUserInfo(user));
    EXPECT_EQ(user.open_id, L"o") << "left alone";
    for (const wchar_t *odd : {LR"({"nickname":5,"register_from":"7","is_logout":"true"})", LR"({"nickname":"a")"}) {
        scriptedSdk().userInfoJson = odd;
        EXPECT_TRUE(adapter.GetUserInfo(user));
        EXPECT_EQ(std::tuple(user.nickname, user.register_from, user.is_logout), std::tuple(L"", 0, false));
    }
    EXPECT_EQ(scriptedSdk().stringsGiven, 0) << "each text went back to the SDK";
}

TEST_F(Account, FacadeAnswersAsTheSdkDoesAndIsNothingWithoutAnAdapter)
{
    m_account->SetCurrentVipFrom(1);
    EXPECT_FALSE(m_account->OpenVipGUIPage(Page(1), 0, 0, false, kPrivilege));
    EXPECT_EQ(answers(*m_account), "nnnnnnnnnnnnn7");
    EXPECT_FALSE(m_account->IPDFVipSdkAdapter::RefreshLocalUserInfoCache()) << "of an adapter without a cache";

    m_account->Initialize(true);
    bool out = true;
    const auto *rook = dynamic_cast<CPDFRookVipSdkAdapter *>(m_account->getCurrentVipSdkAdapter(out));
    EXPECT_FALSE(out);
    ASSERT_NE(rook, nullptr);
    m_account->Initialize(false);
    EXPECT_EQ(m_account->getCurrentVipSdkAdapter(out), rook);

    scriptedSdk().succeeds = false;
    EXPECT_EQ(answers(*m_account), "nnnnnnnnnynyy1");
    EXPECT_EQ(scriptedSdk().setUserInfo, (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
    scriptedSdk().succeeds = scriptedSdk().loggedIn = true;
    scriptedSdk().userInfoJson = scriptedSdk().certificate = L"{}";
    scriptedSdk().login = [](const auto &user, const auto &password, int &, bool &) {
        return user + password == L"up";
    };
    EXPECT_EQ(answers(*m_account), "yyyyyyyyynnyy0");
    m_account->Uninitialize();
    EXPECT_EQ(answers(*m_account), "nnnnnnnnnnnnn7");
}

TEST_F(Account, CallbacksAreToldOnceOfEachChange)
{
    Listener listener;
    m_account->RegisterUserInfoChangeCallBack(&listener);
    m_account->Initialize(true);
    ASSERT_EQ(scriptedSdk().listeners.size(), 1U);
    vip_sdk::IUserInfoChangeListener *adapter = scriptedSdk().listeners.front();
    adapter->OnUserInfoChange();
    EXPECT_EQ(listener.told, L"") << "registered before there was an adapter";
    for (Listener *each : {&listener, &listener, static_cast<Listener *>(nullptr)})
        m_account->RegisterUserInfoChangeCallBack(each);
    scriptedSdk().userInfoJson = LR"({"nickname":"a"})";
    adapter->OnUserInfoChange();
    scriptedSdk().userInfoJson.reset();
    adapter->OnLogoutForeverUserInfoChange();
    m_account->UnRegisterUserInfoChangeCallBack(&listener);
    adapter->OnUserInfoChange();
    EXPECT_EQ(listener.told, L"change a, goodbye , ") << "also of a user who cannot be read";
    m_account->Uninitialize();
    EXPECT_TRUE(scriptedSdk().listeners.empty());
}

TEST_F(Account, PageProviderOfTheHostComesFirst)
{
    struct Provider : IVipPageProvider
    {
        bool OpenLoginPage(Page, int, int, bool, Privilege) override { return note('l'); }
        bool OpenVipPage(Page page, int, int, bool, Privilege) override { return note('v') && page != 2; }
        bool OpenHostPage(Page, int from, int fid, bool logoutForever, Privilege privilege) override
        {
            return note('h') && from == 1 && fid == 9 && logoutForever && privilege == kPrivilege;
        }
        bool note(char operation) { return !(opened += operation).empty(); }
        std::string opened;
    } provider;
    m_account->setPageProvider(&provider);
    const auto open = [this](int page) { return m_account->OpenVipGUIPage(Page(page), 1, 9, true, kPrivilege); };
    EXPECT_EQ(std::vector({open(1), open(7), open(99), open(2)}), std::vector({true, true, true, false}));
    EXPECT_EQ(provider.opened, "lhvv");
    m_account->setPageProvider(nullptr);
    EXPECT_FALSE(open(1));
}

TEST_F(Account, ListenersComeAndGoWhileNoticesAreGiven)
{
    m_account->Initialize(true);
    std::atomic<bool> done{false};
    std::thread sdk([&] {
        while (!done) {
            const std::lock_guard lock(scriptedSdk().listenerMutex);
            for (vip_sdk::IUserInfoChangeListener *listener : scriptedSdk().listeners)
                listener->OnUserInfoChange();
        }
    });
    test::onThreads(4, [this](int) {
        std::vector<Listener> listeners(50);
        for (Listener &listener : listeners)
            m_account->RegisterUserInfoChangeCallBack(&listener);
        for (Listener &listener : listeners)
            m_account->UnRegisterUserInfoChangeCallBack(&listener);
    });
    m_account->Uninitialize(); // amid notices
    done = true;
    sdk.join();
}

TEST_F(Account, PageAddressTellsLanguageCertificateAndInstallation)
{
    m_bundle.writeGlobalFile("[common]\napp_international=1\n");
    EXPECT_EQ(OndVipGeneratorUtil::GetProductInfo().tid1, 0);
    m_bundle.writeRegistry("tid1=1\ntid2=2\ntod1=3\ntod2=-4\niid=5\npid=6\ntryno=7\ninstalltime=8\nuuid=a,b c\n");
    test::fakePlatform().info[""]["CFBundleShortVersionString"] = "1.2.3";
    test::writeFile(m_bundle / "Foo.app/Contents/Resources/cfgdata/language.json",
                    R"({"languages":[{"code":"en","show_name":"English"},{"code":"de","show_name":"Deutsch"}]})");
    const QString host = QString::fromStdString(MacGlobalUrl::GetMacInternationalPayWebHost());
    const QString info = OndVipGeneratorUtil::GetPublicInfo(10, 11);
    EXPECT_TRUE(info.startsWith("tid1=1&tid2=2&tod1=3&tod2=-4&iid=5&tryno=7&uuid=a,b c&filever="))
        << info.toStdString();
    EXPECT_TRUE(info.endsWith("&showfrom=10&function_id=11&installtime=8&language=en")) << info.toStdString();

    const auto url = [](int page) { return OndVipGeneratorUtil::GetOpenUrl(Page(page), 10, 11, 12); };
    EXPECT_EQ(url(12), host + "/forgot-password?package_id=12&" + info);
    MacGlobalSetting::SetCurrentLanguage("Deutsch");
    EXPECT_TRUE(url(8).startsWith(host + "/de/reset-password?package_id=12&tid1=1&")) << url(8).toStdString();
    EXPECT_TRUE(url(8).endsWith("&language=de")) << url(8).toStdString();

    m_account->Initialize(true);
    scriptedSdk().certificate = L"cert=a%1b";
    EXPECT_TRUE(url(12).startsWith(host + "/de/forgot-password?cert=a%1b&package_id=12&tid1=1&"));
    m_account->Uninitialize();
}

TEST_F(Account, ProductIsReadOnceAndStored)
{
    const std::string folder = m_bundle / "Foo.app/Contents/Resources/cfgdata/", store = folder + "cfgdata.ini.user";
    const auto current = &CPDFVipSdkAdapter::getCurrentVipSdkId;
    EXPECT_TRUE(test::succeedsInProcesses(1, [&](int) {
        test::writeFile(folder + "componentConfig.ini",
                        "[product]\nis_tv_product=1\nocr_app_id=1\nocr_app_id_tolva=2\n");
        EXPECT_EQ(current(), 103) << "the brand's own";
        EXPECT_EQ(SingleTon<ProductCfgUtil>::GetInstance()->getServiceAppId(), 2);
    }));
    EXPECT_TRUE(test::succeedsInProcesses(1, [&](int) {
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

TEST_F(Account, InternationalEditionUsesTheSdksTelemetryAndStopsInReverse)
{
    m_bundle.writeGlobalFile("[common]\napp_international=1\n");
    EXPECT_TRUE(VipSdkWrapper::UnInit()) << "nothing was started";

    EXPECT_TRUE(VipSdkWrapper::Init());
    EXPECT_EQ(dynamic_cast<vip_sdk::VipSdkTelemImpl *>(VipSdkWrapper::GetVipTelemInterface()), nullptr);
    EXPECT_EQ(vip_sdk::VipSdkInterfaceMgr::GetInstance()->GetInterface("vip_sdk_core"), nullptr);
    const auto *first = VipSdkWrapper::GetVipSdkCoreInterface();
    EXPECT_TRUE(CPDFNewVipSdkWrap::_Init());
    EXPECT_NE(VipSdkWrapper::GetVipSdkCoreInterface(), first) << "replaced, and not stopped";
    scriptedSdk().stopping = [] { EXPECT_EQ(VipSdkWrapper::GetVipSdkCoreInterface(), nullptr) << "found no more"; };
    EXPECT_TRUE(CPDFNewVipSdkWrap::GetInstance()->_Uninit());
    const std::string starts = "prepare, start core, start telemetry, ";
    EXPECT_EQ(scriptedSdk().calls, starts + starts + "stop telemetry, stop core, ");
    EXPECT_EQ(VipSdkWrapper::GetVipSdkCoreInterface(), nullptr);
    EXPECT_EQ(VipSdkWrapper::GetVipTelemInterface(), nullptr);
}

TEST_F(Account, DomesticEditionReportsFromItsOwnThread)
{
    std::atomic<bool> reported{false};
    scriptedSdk().report = [&, test = std::this_thread::get_id()](const std::wstring &event, const auto &) {
        reported = event == L"event" && std::this_thread::get_id() != test;
    };
    ASSERT_TRUE(CPDFNewVipSdkWrap::InitInstance());
    ASSERT_NE(VipSdkWrapper::GetVipTelemInterface(), nullptr);
    VipSdkWrapper::GetVipTelemInterface()->SendTelemData(new VipTelemData(L"event"));
    EXPECT_TRUE(test::eventually([&] { return reported.load(); }));
    EXPECT_TRUE(CPDFNewVipSdkWrap::UnInitInstance());
    EXPECT_EQ(scriptedSdk().calls, "prepare, start core, stop core, ");
}
