#include "tests/process/RealBundle.h"

#include <gtest/gtest.h>

constexpr int kDeadlineMs = 600'000;

TEST(AccountProcesses, WhatOneDoesAllKnow)
{
    const test::RealBundle bundle;
    QProcess watch;
    test::start(watch, bundle.inspector(), {"--json", "watch"}, bundle.home());
    const auto next = [&] { // line, as soon as it is there
        while (!watch.canReadLine() && watch.waitForReadyRead(kDeadlineMs)) { }
        return nlohmann::json::parse(watch.readLine().toStdString())["watch"];
    };
    EXPECT_EQ(next()["IsLogin"], false);
    EXPECT_TRUE(std::filesystem::is_empty(bundle.home())) << "looking creates nothing";

    const auto login = bundle.inspect({"--json", "login", "j\033@example.org"}, "wrong\n");
    EXPECT_EQ(login.exitStatus, 1) << "no e-mail address";
    EXPECT_EQ(login.errors, "pdforvell-inspect: login failed, email format wrong (4572012)\n");
    EXPECT_EQ(bundle.inspect({"login", "jo@example.org"}, "opensesame\n").exitStatus, 0);
    const nlohmann::json notice = next();
    EXPECT_EQ(notice["notice"], "OnUserInfoChange");
    EXPECT_EQ(notice["email"], "jo@example.org");
    EXPECT_EQ(bundle.inspectJson({"account"})["account"]["open_id"], notice["open_id"]);

    EXPECT_EQ(bundle.inspect({"logout"}).exitStatus, 0);
    EXPECT_EQ(next()["IsLogin"], false);
    watch.terminate();
    EXPECT_TRUE(watch.waitForFinished(kDeadlineMs));
    EXPECT_EQ(std::pair(watch.exitStatus(), watch.exitCode()), std::pair(QProcess::NormalExit, 0));
}

TEST(AccountHelper, RefusesWhatItDoesNotUnderstand)
{
    const test::RealBundle bundle;
    const std::pair<QStringList, int> rows[] = {{{}, 2},
                                                {{"--open_web=else"}, 2},
                                                {{"--open_web=main", "--pid=x"}, 2},
                                                {{"--open_web=main", "-url=file:///etc/passwd"}, 2},
                                                {{"--open_web=login", "--logoutforever=2"}, 2},
                                                {{"report.pdf\033[2J\u009b"}, 2},
                                                {{"--open_web=main", "-url=https://no-browser.example"}, 1},
                                                {{"--help"}, 0}};
    for (const auto &[arguments, status] : rows) {
        const auto result = test::runProcess(bundle.contents("MacOS/orvell-account"), arguments, bundle.home());
        EXPECT_EQ(result.exitStatus, status) << arguments.join(' ').toStdString();
        EXPECT_EQ(result.errors.find("orvell-account: ") == std::string::npos, status == 0) << result.errors;
        EXPECT_EQ(result.errors.find_first_of("\033\x9b"), std::string::npos) << "steers the terminal";
    }
}

TEST(AccountHelper, DeletesAnAccountOnlyWhenItIsWanted)
{
    const test::RealBundle bundle;
    const std::string helper = bundle.contents("MacOS/orvell-account");
    const QStringList asked = {"--open_web=login", "--pid=13", "", "--vipfrom=3", "--logoutforever=1"};
    const auto nobody = test::runProcess(helper, asked, bundle.home());
    EXPECT_EQ(nobody.exitStatus, 1);
    EXPECT_NE(nobody.errors.find("account don't exists (4572013)"), std::string::npos) << nobody.errors;

    ASSERT_EQ(bundle.inspect({"login", "jo@example.org"}, "opensesame\n").exitStatus, 0);
    QProcess question;
    test::start(question, helper, asked, bundle.home());
    EXPECT_FALSE(question.waitForFinished(1000)) << "it waits for an answer";
    question.kill();
    question.waitForFinished(kDeadlineMs);
    EXPECT_EQ(bundle.inspectJson({"account"})["account"]["email"], "jo@example.org");

    EXPECT_EQ(test::runProcess(helper, asked + QStringList("--yes"), bundle.home()).exitStatus, 0);
    EXPECT_EQ(bundle.inspectJson({"account"})["account"]["IsLogin"], false);
}
