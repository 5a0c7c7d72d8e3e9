#include "tests/vipsdk/TestStore.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

using test::TestStore;
using vip_sdk::VipSdkCoreInterfaceImpl;

namespace {

const std::wstring kLoggedOut = LR"({"is_logout":true})";

fs::perms modeOf(const fs::path &path)
{
    return fs::status(path).permissions();
}

} // namespace

TEST(AccountStore, UnknownAddressGetsAnAccountAndOnlyItsPasswordOpensIt)
{
    const TestStore store;
    fs::remove_all(store.path(""));
    VipSdkCoreInterfaceImpl core;
    EXPECT_FALSE(core.IsLogin());
    EXPECT_TRUE(core.Logout());
    EXPECT_EQ(TestStore::userInfo(), kLoggedOut);
    EXPECT_FALSE(fs::exists(store.path(""))) << "reading creates nothing";

    int error = -1;
    bool created = false;
    EXPECT_TRUE(core.Login(L"Ann@Example.org", L"s\u00e9cret", error, created));
    EXPECT_TRUE(created && error == 0 && core.IsLogin());
    EXPECT_NE(TestStore::userInfo().find(LR"("email":"ann@example.org")"), std::wstring::npos);
    EXPECT_TRUE(core.Login(L"ann@example.org", L"se\u0301cret", error, created)) << "the same accent, typed otherwise";
    EXPECT_FALSE(created);
    const std::wstring session = TestStore::userInfo();
    EXPECT_FALSE(core.Login(L"ann@example.org", L"secret", error, created));
    EXPECT_EQ(TestStore::userInfo(), session) << "a failed login leaves the session alone";

    EXPECT_EQ(modeOf(store.path("")), fs::perms::owner_all);
    for (const auto &file : fs::directory_iterator(store.path(""))) {
        EXPECT_EQ(modeOf(file), fs::perms::owner_read | fs::perms::owner_write) << file;
        EXPECT_EQ(test::readFile(file).find("cret"), std::string::npos) << file;
    }
}

TEST(AccountStore, LoginErrors)
{
    const TestStore store;
    const std::wstring name(64, L'n');
    const struct
    {
        std::wstring user;
        const wchar_t *password;
        int error;
    } rows[] = {
        {L"seed@example.org", L"wrong", 4572014},
        {L"seed@example.org", L"", 4572014},
        {L"seed@example.org", nullptr, 4572014},
        {L"seed", L"seed", 4572012},
        {L"", L"seed", 4572012},
        {L"a@b", L"seed", 4572012},
        {L"a@-b.org", L"seed", 4572012},
        {L"a..b@example.org", L"seed", 4572012},
        {L"\u00fc@example.org", L"x", 4572012},
        {L"a@example.org\n", L"seed", 4572012},
        {name + L"@example", L"x", 4572012},
        {name + L"n@example.org", L"seed", 4572011},
    };
    for (const auto &row : rows)
        EXPECT_EQ(TestStore::login(row.user.c_str(), row.password), row.error)
            << QString::fromStdWString(row.user).toStdString();
    EXPECT_EQ(TestStore::login(nullptr, nullptr), 4572012);
    EXPECT_EQ(TestStore::login((name + L"@example.org").c_str(), L"x"), 0);
}

TEST(AccountStore, SessionAndAccountEnd)
{
    const TestStore store;
    VipSdkCoreInterfaceImpl core;
    int result = -1;
    EXPECT_FALSE(core.LogoutForever(&result));
    EXPECT_EQ(result, 4572013);
    wchar_t *certificate = nullptr;
    EXPECT_FALSE(core.GetUserCertificate(&certificate));
    EXPECT_FALSE(core.SetUserInfo(nullptr, L"t", nullptr, nullptr));

    EXPECT_TRUE(core.SetUserInfo(L"seed", L"secret token", L"\U0001F600", L"a"));
    EXPECT_EQ(TestStore::userInfo(),
              L"{\"avatar\":\"a\",\"email\":\"seed@example.org\",\"is_logout\":false,\"nickname\":\""
              L"\U0001F600\",\"open_id\":\"seed\",\"register_from\":1,\"token\":\"secret token\"}");
    ASSERT_TRUE(core.GetUserCertificate(&certificate));
    const std::unique_ptr<wchar_t[]> owned(certificate);
    EXPECT_EQ(std::wstring(certificate).rfind(L"open_id=seed&certificate=", 0), 0U);
    EXPECT_EQ(std::wstring(certificate).find(L"secret"), std::wstring::npos);

    EXPECT_TRUE(core.Logout());
    EXPECT_FALSE(core.IsLogin());
    EXPECT_EQ(TestStore::login(), 0);
    EXPECT_NE(TestStore::userInfo().find(L"\U0001F600"), std::wstring::npos) << "the profile stays with the account";
    EXPECT_TRUE(core.LogoutForever(nullptr));
    EXPECT_EQ(TestStore::userInfo(), kLoggedOut);
    EXPECT_EQ(test::readFile(store.path("accounts.json")).find("seed"), std::string::npos);
}

TEST(AccountStore, WhatCannotBeUsedIsLeftAlone)
{
    const int unavailable = vip_sdk::LOGIN_ERROR_UNAVAILABLE;
    const struct
    {
        const char *name;
        std::function<void(const TestStore &)> harm;
        const char *file;
        int error;
    } rows[] = {
        {"truncated accounts", [](auto &store) { fs::resize_file(store.path("accounts.json"), 40); }, "accounts.json",
         unavailable},
        {"newer accounts", [](auto &store) { test::writeFile(store.path("accounts.json"), R"({"format":2})"); },
         "accounts.json", unavailable},
        {"newer session", [](auto &store) { test::writeFile(store.path("session.json"), R"({"format":2})"); },
         "session.json", unavailable},
        {"truncated session", [](auto &store) { test::writeFile(store.path("session.json"), R"({"form)"); }, nullptr,
         0},
        {"no file", [](auto &store) { fs::create_directory(store.path("session.json")); }, nullptr, unavailable},
        {"link", [](auto &store) { fs::create_symlink("accounts.json", store.path("session.json")); }, nullptr,
         unavailable},
        {"open store", [](auto &store) { fs::permissions(store.path(""), fs::perms::all); }, "accounts.json",
         unavailable},
        {"open accounts",
         [](auto &store) {
             fs::permissions(store.path("accounts.json"), fs::perms::others_write, fs::perm_options::add);
         },
         "accounts.json", unavailable},
        {"lock of another user",
         [](auto &store) {
             test::writeFile(store.path("lock"), "");
             if (::chown(store.path("lock").c_str(), 1, 1) != 0)
                 fs::permissions(store.path("lock"), fs::perms::all); // which is refused, too
         },
         "accounts.json", unavailable},
    };
    for (const auto &row : rows) {
        const TestStore store;
        row.harm(store);
        const std::string before = row.file ? test::readFile(store.path(row.file)) : "";
        EXPECT_EQ(TestStore::login(), row.error) << row.name;
        EXPECT_EQ(row.file ? test::readFile(store.path(row.file)) : "", before) << row.name;
    }
}

TEST(AccountStore, FullDiskIsAnErrorAndLosesNothing)
{
    const TestStore store;
    ASSERT_EQ(TestStore::login(), 0);
    const std::wstring session = TestStore::userInfo();
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{10, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    EXPECT_EQ(TestStore::login(), static_cast<int>(vip_sdk::LOGIN_ERROR_UNAVAILABLE));
    EXPECT_EQ(TestStore::login(L"new@example.org", L"x"), static_cast<int>(vip_sdk::LOGIN_ERROR_UNAVAILABLE));
    EXPECT_FALSE(VipSdkCoreInterfaceImpl().Logout());
    EXPECT_EQ(TestStore::userInfo(), session);
    const rlimit free{RLIM_INFINITY, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &free), 0);
    EXPECT_EQ(TestStore::login(), 0);
}

TEST(AccountStore, KilledAtAnyMomentItStaysWhole)
{
    const TestStore store;
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same moments every time, as far as the system goes along
    int logins = 0;
    for (int round = 0; round < 200; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            VipSdkCoreInterfaceImpl core;
            for (;;) {
                if (TestStore::login() != 0 || !core.SetUserInfo(L"seed", L"t", L"n", L"a") || !core.Logout())
                    ::_exit(1);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 5000));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "an operation failed";

        const std::wstring info = TestStore::userInfo();
        logins += info == kLoggedOut ? 0 : 1;
        ASSERT_TRUE(info == kLoggedOut || info.find(LR"("open_id":"seed")") != std::wstring::npos);
        ASSERT_EQ(TestStore::login(), 0) << "round " << round;
    }
    EXPECT_GT(logins, 0);
}
