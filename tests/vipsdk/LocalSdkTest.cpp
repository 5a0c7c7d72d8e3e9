#include "tests/support/Concurrency.h"
#include "tests/support/TestFiles.h"
#include "vipsdk/include/ProductInfoMgr.h"
#include "vipsdk/include/VipSdkCoreInterfaceImpl.h"
#include "vipsdk/include/VipSdkTeleM3rdImpl.h"
#include "vipsdk/include/VipTelemData.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

using test::eventually;
using vip_sdk::VipSdkCoreInterfaceImpl;

const std::wstring kLoggedOut = LR"({"is_logout":true})";
const std::string kAccounts =
    R"({"format":1,"accounts":{"seed@example.org":{"open_id":"seed","nickname":"s","password":{"salt":"00","iterations":1,)"
    R"("digest":"4ccf8f3afc0454e3b29c36e0b171639be2a11db2f50894c953c468ce5c0f640a"}}}})";

/// A store in a folder of its own, with an account seed@example.org whose password "seed" is cheap to check.
struct LocalSdk : testing::Test
{
    LocalSdk()
    {
        ::umask(S_IWGRP | S_IWOTH); // where others may write, there is no store
        test::writeFile(path("accounts.json"), kAccounts);
    }

    [[nodiscard]] std::string path(const std::string &name) const { return m_dir / ("store/" + name); }

    /// Logs in; 0 or the error.
    int login(const std::wstring &user = L"seed@example.org", const wchar_t *password = L"seed")
    {
        int error = -1;
        const bool done = core.Login(user.c_str(), password, error, created);
        return done == (error == 0) ? error : -1;
    }

    /// The user's information, empty when it cannot be read.
    std::wstring userInfo()
    {
        wchar_t *json = nullptr;
        std::wstring text = core.GetUserInfoJson(&json) ? json : L"";
        core.FreeString(json);
        return text;
    }

    bool setUserInfo(const std::wstring &nickname) { return core.SetUserInfo(L"seed", L"t", nickname.c_str(), L"a"); }

    test::TempDir m_dir;
    const int m_chosen = ::setenv("ONDVIPSDK_DATA_DIR", path("").c_str(), 1); // before the service asks for it
    VipSdkCoreInterfaceImpl core;
    bool created = false;
};

struct Listener : vip_sdk::IUserInfoChangeListener
{
    void OnUserInfoChange() override
    {
        changes += std::this_thread::get_id() == test ? 100 : 1;
        if (then)
            then();
    }
    void OnLogoutForeverUserInfoChange() override { ++closures; }

    std::function<void()> then; ///< what it does in the notice
    std::atomic<int> changes{0}, closures{0};
    const std::thread::id test = std::this_thread::get_id();
};

TEST_F(LocalSdk, UnknownAddressGetsAnAccountThatOnlyItsPasswordOpens)
{
    fs::remove_all(path(""));
    EXPECT_TRUE(core.Logout());
    EXPECT_EQ(userInfo(), kLoggedOut);
    EXPECT_FALSE(fs::exists(path(""))) << "reading creates nothing";

    const std::wstring name(64, L'n');
    EXPECT_EQ(login(name + L"@Example.org", L"s\u00e9cret"), 0);
    EXPECT_TRUE(created);
    EXPECT_EQ(login(name + L"@example.org", L"se\u0301cret"), 0) << "the same accent, typed otherwise";
    EXPECT_FALSE(created);
    const std::wstring session = userInfo();
    const std::pair<std::wstring, int> rows[] = {
        {name + L"@example.org", 4572014}, {L"ann", 4572012},
        {L"a..b@example.org", 4572012},    {L"\u00fc@example.org", 4572012},
        {name + L"@example", 4572012},     {name + L"n@example.org", 4572011},
    };
    for (const auto &[user, error] : rows)
        EXPECT_EQ(login(user, L"wrong"), error) << testing::PrintToString(user);
    EXPECT_EQ(userInfo(), session) << "failed logins leave the session alone";

    EXPECT_EQ(fs::status(path("")).permissions(), fs::perms::owner_all);
    for (const auto &file : fs::directory_iterator(path(""))) {
        EXPECT_EQ(file.status().permissions(), fs::perms::owner_read | fs::perms::owner_write) << file;
        EXPECT_EQ(test::readFile(file).find("cret"), std::string::npos) << file;
    }
}

TEST_F(LocalSdk, SessionAndAccountEnd)
{
    int result = -1;
    wchar_t *certificate = nullptr;
    EXPECT_FALSE(core.LogoutForever(&result));
    EXPECT_EQ(result, 4572013);
    EXPECT_FALSE(core.GetUserCertificate(&certificate));
    EXPECT_FALSE(core.SetUserInfo(nullptr, L"t", nullptr, nullptr));
    EXPECT_TRUE(setUserInfo({L'n', wchar_t(0xD83D)}));
    EXPECT_EQ(userInfo().find(L"\\ud83d"), std::wstring::npos) << "half a character, which not every reader takes";
    EXPECT_TRUE(setUserInfo(L"\U0001F600"));
    EXPECT_FALSE(setUserInfo(std::wstring(17 << 20, L'n'))) << "could not be read again";
    EXPECT_EQ(userInfo(),
              L"{\"avatar\":\"a\",\"email\":\"seed@example.org\",\"is_logout\":false,\"nickname\":\""
              L"\U0001F600\",\"open_id\":\"seed\",\"register_from\":1,\"token\":\"t\"}");
    EXPECT_TRUE(core.SetUserInfo(L"a&b", L"secret", L"", L"") && core.GetUserCertificate(&certificate));
    const std::wstring text = std::unique_ptr<wchar_t[]>(certificate).get();
    EXPECT_TRUE(text.rfind(L"open_id=a%26b&certificate=", 0) == 0 && text.find(L"secret") == std::wstring::npos);

    EXPECT_TRUE(core.Logout() && !core.IsLogin() && login() == 0);
    EXPECT_NE(userInfo().find(L'\U0001F600'), std::wstring::npos) << "the profile stays with the account";
    EXPECT_EQ(test::readFile(path("accounts.json")).find("\"iterations\": 1,"), std::string::npos) << "is renewed";
    EXPECT_TRUE(core.LogoutForever(nullptr) && userInfo() == kLoggedOut);
    EXPECT_EQ(test::readFile(path("accounts.json")).find("seed"), std::string::npos);
}

TEST_F(LocalSdk, WhatCannotBeUsedIsLeftAlone)
{
    using Path = const std::string &;
    const std::tuple<const char *, const char *, void (*)(Path), bool> rows[] = {
        {"truncated", "accounts.json", [](Path path) { fs::resize_file(path, 40); }, false},
        {"newer accounts", "accounts.json", [](Path path) { test::writeFile(path, R"({"format":2})"); }, false},
        {"newer session", "session.json", [](Path path) { test::writeFile(path, R"({"format":2})"); }, false},
        {"truncated session", "session.json", [](Path path) { test::writeFile(path, R"({"form)"); }, true},
        {"pipe", "lock", [](Path path) { ::mkfifo(path.c_str(), 0600); }, false},
        {"link", "session.json", [](Path path) { fs::create_symlink("accounts.json", path); }, false},
        {"open store", "", [](Path path) { fs::permissions(path, fs::perms::all); }, false},
        {"open accounts", "accounts.json", [](Path path) { fs::permissions(path, fs::perms::all); }, false},
        {"another's accounts", "accounts.json", [](Path path) { EXPECT_EQ(::chown(path.c_str(), 1, 1), 0); }, false},
    };
    for (const auto &[name, file, harm, isUsable] : rows) {
        if (name == std::string("another's accounts") && ::geteuid() != 0)
            continue; // only root can give files away
        fs::remove_all(path(""));
        test::writeFile(path("accounts.json"), kAccounts);
        harm(path(file));
        const std::string before = test::readFile(path("accounts.json")) + test::readFile(path("session.json"));
        const bool isAsked = isUsable || file == std::string("lock"); // who locks comes after the password
        EXPECT_EQ(login(L"seed@example.org", L"wrong"), isAsked ? 4572014 : 4572000) << name;
        EXPECT_EQ(setUserInfo(L"n"), isUsable) << name;
        const std::string after = test::readFile(path("accounts.json")) + test::readFile(path("session.json"));
        EXPECT_EQ(after == before, !isUsable) << name;
    }
}

TEST_F(LocalSdk, WhatStandsOpenOrInTheWayIsMended)
{
    const auto others = fs::perms::group_read | fs::perms::others_read;
    fs::permissions(path("accounts.json"), others, fs::perm_options::add);
    test::writeFile(path("accounts.json.new"), "of a process that was killed");
    test::writeFile(path("session.json.new/kept"), "k");
    EXPECT_TRUE(setUserInfo(L"n"));
    EXPECT_EQ(fs::status(path("accounts.json")).permissions() & others, fs::perms::none);
    const fs::recursive_directory_iterator files(path(""));
    EXPECT_EQ(std::count_if(begin(files), end(files), [](auto &file) { return file.path().filename() == "kept"; }), 1);
}

TEST_F(LocalSdk, PasswordsAreDigestedBeforeTheStoreIsLocked)
{
    const int lock = ::open(path("lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    EXPECT_EQ(login(L"seed@example.org", L"wrong"), 4572014) << "waited for the lock";

    std::thread holder([lock] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        ::close(lock);
    });
    int errors[2] = {};
    test::onThreads(3, [&](int i) {
        bool isNew = false;
        if (i < 2)
            core.Login(L"new@example.org", i ? L"one" : L"other", errors[i], isNew);
        else
            EXPECT_TRUE(setUserInfo(L"n")) << "waited";
    });
    holder.join();
    EXPECT_EQ(std::minmax({errors[0], errors[1]}), std::pair(0, 4572014)) << "the second finds another password";
}

TEST_F(LocalSdk, FullDiskIsAnErrorAndLosesNothing)
{
    ASSERT_TRUE(setUserInfo(L"s"));
    const std::wstring session = userInfo();
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit free{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &free), 0);
    const rlimit full{10, free.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    EXPECT_EQ(login(L"new@example.org"), 4572000);
    EXPECT_FALSE(core.LogoutForever(nullptr));
    EXPECT_FALSE(setUserInfo(L"n"));
    EXPECT_EQ(userInfo(), session);
    EXPECT_TRUE(core.Logout()) << "takes no room";
    EXPECT_FALSE(core.IsLogin());
    ::setrlimit(RLIMIT_FSIZE, &free);
}

TEST_F(LocalSdk, ListenersAreToldOnItsOwnThreadAndMayLeaveFromThere)
{
    Listener listener, removed, leaving;
    leaving.then = [&] {
        core.RemoveUserInfoChangeListener(&leaving);
        core.UnInitialize();
        core.Initialize();
    };
    for (Listener *each : {&leaving, &listener, &listener, &removed, static_cast<Listener *>(nullptr)})
        core.AddUserInfoChangeListener(each);
    core.RemoveUserInfoChangeListener(&removed);
    EXPECT_FALSE(core.StartFrontTask());
    core.Initialize();
    core.Initialize();
    EXPECT_TRUE(core.StartFrontTask());
    EXPECT_TRUE(setUserInfo(L"n"));
    EXPECT_TRUE(eventually([&] { return listener.changes == 1 && leaving.changes == 1; }));
    EXPECT_TRUE(setUserInfo(L"m") && eventually([&] { return listener.changes == 2; })) << "started again";
    core.UnInitialize();
    EXPECT_TRUE(core.Logout() && setUserInfo(L"n"));
    core.Initialize();
    EXPECT_TRUE(core.LogoutForever(nullptr));
    EXPECT_TRUE(eventually([&] { return listener.closures == 1; }));
    core.UnInitialize();
    EXPECT_EQ(listener.changes, 2) << "what changes while it is stopped is not told";
    EXPECT_EQ(leaving.changes + leaving.closures + removed.changes + removed.closures, 1);

    test::onThreads(4, [this](int thread) {
        for (int i = 0; i < 500; ++i)
            (i + thread) % 2 ? core.Initialize() : core.UnInitialize();
    });
}

TEST_F(LocalSdk, ListenersAreToldOfWhatOthersDoWhereverTheStoreGoes)
{
    fs::remove_all(path(""));
    Listener listener;
    core.AddUserInfoChangeListener(&listener);
    core.Initialize();
    VipSdkCoreInterfaceImpl other;
    // More of them than slow looks have time for.
    for (int step = 0; step < 12; ++step) {
        const int before = listener.changes;
        if (step % 4 == 1)
            fs::rename(path(""), path("../old" + std::to_string(step)));
        else if (step % 4 == 3)
            fs::remove_all(path(""));
        else
            ASSERT_TRUE(other.SetUserInfo(L"o", L"t", L"n", L"a"));
        ASSERT_TRUE(eventually([&] { return listener.changes > before; })) << step;
    }
    core.UnInitialize();
}

TEST_F(LocalSdk, ProcessEndsWithoutStoppingItAlthoughAListenerWaitsForThat)
{
    const auto startAndEnd = [this] {
        ::alarm(60);
        static auto &service = *new VipSdkCoreInterfaceImpl; // static for the leak checker to find
        static auto &listener = *new Listener;
        listener.then = [] {
            for (;;)
                ::pause();
        };
        service.AddUserInfoChangeListener(&listener);
        service.Initialize();
        setUserInfo(L"n");
        std::exit(eventually([] { return listener.changes == 1; }) ? 0 : 1);
    };
    EXPECT_EXIT(startAndEnd(), testing::ExitedWithCode(0), "");
}

TEST_F(LocalSdk, SpoolKeepsTheLinesOfManyWholeWhateverWasThere)
{
    test::writeFile(path("product.ini"), "[product]\ntid1=1\npid=44\nuuid=u\n");
    test::writeFile(path("telemetry.jsonl"), R"({"a piece of a li)");
    ProductInfoMgr::GetInstance()->Initialize();
    test::onThreads(4, [](int) {
        for (int record = 0; record < 50; ++record)
            vip_sdk::VipSdkTeleM3rdImpl().SendTelemData(record ? new VipTelemData(L"line\n\u00fc") : nullptr);
    });

    const std::string spool = test::readFile(path("telemetry.jsonl"));
    const QRegularExpression whole(
        R"(^\{"a piece of a li\n(\{"event":"line\\nü","product":\{[^\n]*"pid":44,[^\n]*\}\n){196}$)");
    EXPECT_TRUE(whole.match(QString::fromStdString(spool)).hasMatch()) << spool;
    fs::permissions(path("telemetry.jsonl"), fs::perms::all);
    vip_sdk::VipSdkTeleM3rdImpl().SendTelemData(new VipTelemData(L"line"));
    EXPECT_EQ(test::readFile(path("telemetry.jsonl")), spool) << "others could write to it";
}
