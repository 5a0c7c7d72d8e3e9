#include "account/CPDFRookVipSdkAdapter.h"
#include "account/CPDFVipSdkAdapter.h"
#include "account/OndVipGeneratorUtil.h"
#include "config/MacGlobalSetting.h"
#include "config/ProductCfgUtil.h"
#include "runtime/MacGlobalUrl.h"
#include "tests/support/Eventually.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/ScriptedSdk.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using test::scriptedSdk;

using Info = IPDFVipSdkAdapter::LocalUserInfo;
using Page = IPDFVipSdkAdapter::VIP_GUI_PAGE;

namespace {

constexpr auto kPrivilege = static_cast<IPDFVipSdkAdapter::VIP_PRIVILEGE>(4);

struct Account : testing::Test
{
    const test::FakeBundle m_bundle;
    CPDFVipSdkAdapter *const m_account = CPDFVipSdkAdapter::GetInstance();
};

/// Keeps the command line instead of running it.
template <typename Adapter> struct Recording : Adapter
{
    using Adapter::Adapter;
    bool RunVipProcess(const std::wstring &exePath, const std::wstring &commandLine) override
    {
        program = QString::fromStdWString(exePath).toStdString();
        line = QString::fromStdWString(commandLine).toStdString();
        return true;
    }

    std::string program, line;
};

struct Listener final : IPDFVipSdkAdapter::IUserInfoChangeCallBack
{
    void OnUserInfoChange(const Info &info) override { changes.push_back(info); }
    void OnLogoutForeverUserInfoChange(const Info &info) override { goodbyes.push_back(info); }

    std::vector<Info> changes, goodbyes;
};

/// What the operations answer, "y" or "n": nine that pass on what the SDK says, and four that do not.
std::string answers(IPDFVipSdkAdapter &account)
{
    vip_sdk::UserInfo user;
    Info info;
    std::wstring certificate;
    QString text;
    int code = 0;
    bool flag = false;
    std::string all;
    for (const bool answer :
         {account.IsLogin(), account.GetUserInfo(user), account.GetLocalUserInfo(info),
          account.GetUserCertificate(certificate), account.Logout(), account.StartFrontTask(),
          account.LogoutForever(&code), account.SetUserInfo(L"a", L"b", L"c", L"d"),
          account.Login(L"u", L"p", code, flag), account.IsAnonymous(), account.IsLocalUserInfoHasKeyByCache({}),
          account.RefreshLocalUserInfoCache(), account.GetStrUserInfo(text)})
        all += answer ? 'y' : 'n';
    return all;
}

} // namespace

TEST_F(Account, CommandLinesOfPages)
{
    const std::string web = "--open_web=main --pid=13 --vipfrom=7 -url=" + MacGlobalUrl::GetVipSvrHost();
    const std::tuple<int, int, bool, std::string, std::string> rows[] = {
        // page, feature, log out for good, line, Rook's line
        {1, 9, false, "--open_web=login --pid=13  --vipfrom=7 --subpid=1 --fid=9",
         "--open_web=login --pid=13 --vipfrom=7 --subpid=1 --fid=9"},
        {2, 9, true, "--open_web=main --pid=13  --vipfrom=7 --subpid=1 --fid=9 --logoutforever=1",
         "--open_web=main --pid=13 --vipfrom=7 --subpid=1 --fid=9 --logoutforever=1"},
        {3, 9, true, "--open_action=1 --pid=13  --vipfrom=7 --subpid=1 --fid=9 --logoutforever=1",
         web + "/page/renew?tryno=7"},
        {10, 9, false, "--open_web=main --pid=13  --vipfrom=7 --subpid=1 --fid=9", web + "/page/buy?tryno=7 --fid=9"},
        {10, 233, false, "--open_web=main --pid=13  --vipfrom=7 --subpid=1 --fid=233",
         web + "/page/buy-conversion?tryno=7 --fid=233"},
        {6, 9, false, "", ""},
    };
    m_bundle.writeRegistry("tryno=7\n");
    Recording<CPDFNewVipSdkAdapter> plain(vip_sdk::PRODUCT_ID_PDF);
    Recording<CPDFRookVipSdkAdapter> rook(vip_sdk::PRODUCT_ID_PDF);
    const auto open = [](auto &adapter, int page, int fid, bool logoutForever) {
        adapter.line.clear();
        const bool opened = adapter.OpenVipGUIPage(Page(page), 7, fid, logoutForever, kPrivilege);
        EXPECT_NE(opened, adapter.line.empty()) << page;
        return adapter.line;
    };
    for (const auto &[page, fid, logoutForever, line, rookLine] : rows) {
        EXPECT_EQ(open(plain, page, fid, logoutForever), line);
        EXPECT_EQ(open(rook, page, fid, logoutForever), rookLine);
    }
    EXPECT_EQ(plain.program, m_bundle / "Foo.app/Contents/MacOS/orvell-account");

    for (const char *channel : {"5", "3070"}) {
        m_bundle.writeRegistry(std::string("; of another size\ntryno=") + channel + "\n");
        EXPECT_EQ(open(rook, 11, 1, false), web + "/page/channel/redeem?tryno=" + channel + " --fid=1");
        EXPECT_EQ(open(rook, 10, 233, false), web + "/page/channel/buy-conversion?tryno=" + channel + " --fid=233");
    }
    EXPECT_TRUE(rook.IsNeedCustomLoginPage(Page(1), 6031, 0));
    EXPECT_FALSE(rook.IsNeedCustomLoginPage(Page(2), 6031, 0));
}

TEST_F(Account, HelperGetsEveryPieceBetweenBlanks)
{
    const std::string helper = m_bundle / "Foo.app/Contents/MacOS/orvell-account";
    const std::string seen = m_bundle / "seen";
    CPDFNewVipSdkAdapter adapter(vip_sdk::PRODUCT_ID_PDF);
    const auto run = [&](const wchar_t *line) {
        return adapter.RunVipProcess(QString::fromStdString(helper).toStdWString(), line);
    };
    EXPECT_FALSE(run(L"")) << "no helper";
    test::writeFile(helper,
                    "#!/bin/sh\nprintf '[%s]' \"$@\" > '" + seen + ".new'\nmv '" + seen + ".new' '" + seen + "'\n");
    EXPECT_FALSE(run(L"")) << "not executable";
    std::filesystem::permissions(helper, std::filesystem::perms::owner_all);
    EXPECT_TRUE(run(L"--pid=13  --fid=5 a\"b c\" 'd;$(e)  "));
    EXPECT_TRUE(test::eventually([&] { return std::filesystem::exists(seen); }));
    EXPECT_EQ(test::readFile(seen), "[--pid=13][][--fid=5][a\"b][c\"]['d;$(e)][][]") << "no shell, no quoting";
}

TEST_F(Account, UserIsReadFromWhateverTheSdkAnswers)
{
    const std::tuple<std::wstring, std::wstring, int, bool> rows[] = {
        // JSON, nickname, register_from, is_logout
        {L"{\"nickname\":\"Gr\u00fc\u00dfe \U0001F600\",\"register_from\":3,\"is_logout\":true}",
         L"Gr\u00fc\u00dfe \U0001F600", 3, true},
        {LR"({"nickname":5,"register_from":"7","is_logout":"true","avatar":[]})", L"", 0, false},
        {LR"({"nickname":"a")", L"", 0, false},
    };
    CPDFNewVipSdkAdapter adapter(vip_sdk::PRODUCT_ID_PDF);
    for (const auto &[json, nickname, registerFrom, isLogout] : rows) {
        scriptedSdk().userInfoJson = json;
        vip_sdk::UserInfo user;
        EXPECT_TRUE(adapter.GetUserInfo(user));
        EXPECT_EQ(std::tie(user.nickname, user.register_from, user.is_logout),
                  std::tie(nickname, registerFrom, isLogout));
    }
    scriptedSdk().userInfoJson = LR"({"open_id":"o","token":"t","avatar":"v","email":"e"})";
    Info info;
    vip_sdk::UserInfo user;
    EXPECT_TRUE(adapter.GetLocalUserInfo(info));
    EXPECT_TRUE(adapter.GetUserInfo(user));
    EXPECT_EQ(user.avatar + user.token + user.open_id, L"vto");
    EXPECT_EQ(info.avatar_text + info.email, "ve");

    scriptedSdk().userInfoJson.reset();
    EXPECT_FALSE(adapter.GetUserInfo(user));
    EXPECT_EQ(user.open_id, L"o") << "left alone";
    scriptedSdk().loggedIn = true;
    EXPECT_TRUE(adapter.IsAnonymous()) << "nothing can be read of the user";
    EXPECT_EQ(scriptedSdk().stringsGiven, 0) << "each text went back to the SDK";
}

TEST_F(Account, FacadeAnswersAsTheSdkDoesAndIsNothingWithoutAnAdapter)
{
    m_account->SetCurrentVipFrom(1);
    EXPECT_FALSE(m_account->OpenVipGUIPage(Page(1), 0, 0, false, kPrivilege));
    EXPECT_EQ(answers(*m_account), "nnnnnnnnnnnnn");

    m_account->Initialize(true);
    bool out = true;
    const auto *rook = dynamic_cast<CPDFRookVipSdkAdapter *>(m_account->getCurrentVipSdkAdapter(out));
    EXPECT_FALSE(out);
    ASSERT_NE(rook, nullptr);
    m_account->Initialize(false);
    EXPECT_EQ(m_account->getCurrentVipSdkAdapter(out), rook);

    scriptedSdk().succeeds = false;
    EXPECT_EQ(answers(*m_account), "nnnnnnnnnynyy");
    EXPECT_EQ(scriptedSdk().setUserInfo, (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
    scriptedSdk().succeeds = scriptedSdk().loggedIn = true;
    scriptedSdk().userInfoJson = scriptedSdk().certificate = L"{}";
    scriptedSdk().login = [](const auto &user, const auto &password, int &, bool &) {
        return user + password == L"up";
    };
    EXPECT_EQ(answers(*m_account), "yyyyyyyyynnyy");
    m_account->Uninitialize();
    EXPECT_EQ(answers(*m_account), "nnnnnnnnnnnnn");
}

TEST_F(Account, CallbacksAreToldOnceOfEachChange)
{
    Listener listener;
    m_account->RegisterUserInfoChangeCallBack(&listener);
    m_account->Initialize(true);
    ASSERT_EQ(scriptedSdk().listeners.size(), 1U);
    vip_sdk::IUserInfoChangeListener *adapter = scriptedSdk().listeners.front();
    adapter->OnUserInfoChange();
    EXPECT_TRUE(listener.changes.empty()) << "registered before there was an adapter";
    for (Listener *each : {&listener, &listener, static_cast<Listener *>(nullptr)})
        m_account->RegisterUserInfoChangeCallBack(each);
    scriptedSdk().userInfoJson = LR"({"nickname":"a"})";
    adapter->OnUserInfoChange();
    scriptedSdk().userInfoJson.reset();
    adapter->OnLogoutForeverUserInfoChange();
    ASSERT_EQ(listener.changes.size(), 1U);
    ASSERT_EQ(listener.goodbyes.size(), 1U);
    EXPECT_EQ(listener.changes[0].nickname + L"/" + listener.goodbyes[0].nickname, L"a/") << "unreadable, and told";
    m_account->UnRegisterUserInfoChangeCallBack(&listener);
    adapter->OnUserInfoChange();
    EXPECT_EQ(listener.changes.size(), 1U);
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
