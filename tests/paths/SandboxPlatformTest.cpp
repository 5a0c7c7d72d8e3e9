#include "config/MacConfigPath.h"
#include "paths/MacBookmark.h"
#include "paths/MacPath.h"
#include "paths/MacSandbox.h"
#include "tests/support/Concurrency.h"
#include "tests/support/Platform.h"
#include "tests/support/TestFiles.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QProcess>
#include <QTimer>
#include <cstdlib>
#include <future>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

// Bookmarks, launches and the panel on the platform that the library ships with.

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;
using Bytes = std::vector<unsigned char>;

/// A user with nothing but a folder in an empty home.
struct SandboxPlatform : testing::Test
{
    SandboxPlatform()
    {
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            ::setenv(name, (home / "user").c_str(), 1);
        fs::create_directory(folder);
    }

    const test::TempDir home;
    const std::string folder = home / "Ünï=\"1\"\n%";
    const std::string store = home / "user/sandbox_platform_tests/user-defaults.ini";
};

/// The process that a launch reports, after it ended; -1 when it could not be started.
template <typename Launcher> static int launched(Launcher launcher, const MacSandbox::LaunchParams &params)
{
    const auto outcome = std::make_shared<std::promise<int>>();
    const int pid = launcher(params, [outcome](int pid) { outcome->set_value(pid); }) ? outcome->get_future().get() : 0;
    EXPECT_EQ(MacSandbox::waitProcFinish(pid, 0), 0);
    return pid;
}

TEST_F(SandboxPlatform, BookmarksLeadToTheSameFolderOnly)
{
    EXPECT_FALSE(MacBookmark::hasBookmark(folder));
    EXPECT_FALSE(fs::exists(home / "user")) << "looking creates nothing";
    ASSERT_TRUE(MacBookmark::createBookmark(folder + "/"));
    fs::rename(folder, home / "moved");
    EXPECT_EQ(MacBookmark::entries().at(0).state, MacBookmark::State::unresolvable);
    fs::create_directory(folder);
    EXPECT_EQ(MacBookmark::entries().at(0).state, MacBookmark::State::stale);
    fs::remove(folder);
    fs::rename(home / "moved", folder);
    EXPECT_TRUE(MacBookmark::openBookmark(folder)) << "back again";

    // A document is the one at its path: saving puts another file there.
    const std::string document = folder + "/a.pdf";
    test::writeFile(document, "");
    ASSERT_TRUE(MacBookmark::createBookmark(document));
    test::writeFile(folder + "/saved", "");
    fs::rename(folder + "/saved", document);
    EXPECT_TRUE(MacBookmark::openBookmark(document));
    fs::remove(document);
    fs::create_directory(document);
    EXPECT_FALSE(MacBookmark::openBookmark(document)) << "a folder is none";
    EXPECT_TRUE(MacBookmark::createSharedBookmark(std::string("/\0x", 3)).empty());

    // Only whole data of this version resolves.
    const Bytes good = MacBookmark::createSharedBookmark(folder);
    Bytes newer = good, shorter = good, longer = good;
    newer.at(7)++;
    shorter.pop_back();
    longer.push_back(0);
    for (const Bytes &data : {newer, shorter, longer, good}) {
        platform::setUserDefaultsData("vant_pdf_/x", data);
        EXPECT_EQ(MacBookmark::closeBookmark("/x"), data == good) << testing::PrintToString(data);
    }
}

TEST_F(SandboxPlatform, StoreLosesNothingToWritersNorToDamage)
{
    EXPECT_TRUE(test::succeedsInProcesses(4, [](int process) {
        for (int i = process; i < 400; i += 4)
            platform::setUserDefaultsData(std::to_string(i), Bytes(i, 'x'));
    }));
    for (int i = 0; i < 400; ++i)
        EXPECT_EQ(platform::userDefaultsData(std::to_string(i)), Bytes(i, 'x')) << i;

    const Bytes data{0, 255, '\n', '"'};
    platform::setUserDefaultsData("a/b=c", data);
    const std::string good = test::readFile(store);
    for (const char *damage : {"a/b%3Dc=\"AAA", "a/b%3Dc=\"!!\"", "\xff\n"}) {
        test::writeFile(store, good + damage);
        platform::setUserDefaultsData("", {});
        EXPECT_EQ(platform::userDefaultsData("a/b=c"), data) << damage;
        EXPECT_EQ(platform::userDefaultsData(""), Bytes()) << damage;
    }
    fs::resize_file(store, 64U << 20);
    platform::setUserDefaultsData("too much", {});
    EXPECT_EQ(platform::userDefaultsData("a/b=c"), data) << "a full store keeps what it has";
}

TEST_F(SandboxPlatform, LaunchesWithoutAShell)
{
    const Lines arguments{"", "a b", "$(id)", "'\"\\\n;", "é"};
    const std::string output = home / "out";
    for (const char *name : {"run it", "A.app/Contents/MacOS/b"}) {
        test::writeFile(home / name, "#!/bin/sh\nprintf '%s\\n' \"${0##*/}\" $$ \"$@\" > '" + output + "'\n");
        fs::permissions(home / name, fs::perms::owner_all);
    }
    test::writeFile(home / "A.app/Contents/Info.plist",
                    "<plist><dict><key>CFBundleExecutable</key><string>../../../run it</string></dict></plist>");

    std::string pid = std::to_string(launched(MacSandbox::openApp, {home / "run it", "", arguments}));
    EXPECT_EQ(test::readFile(output), "run it\n" + pid + "\n\na b\n$(id)\n'\"\\\n;\né\n");
    pid = std::to_string(launched(MacSandbox::openURL, {home / "A.app/", "x:a b;$(touch y)&`z`'\n--", arguments}));
    EXPECT_EQ(test::readFile(output), "b\n" + pid + "\nx:a%20b;$(touch%20y)&%60z%60'%0A--\n");
    EXPECT_EQ(launched(MacSandbox::openURL, {home / "A.app", "--option", arguments}), -1);
    EXPECT_EQ(launched(MacSandbox::openApp, {home / "A.app/Contents", "", arguments}), -1) << "no executable";
}

TEST_F(SandboxPlatform, FoldersAndApplicationsAreThoseOfTheSystem)
{
    const std::string database = platform::homeDirectoryOfUser(); // which need not know the user
    const std::string byDatabase = database.empty() ? "" : database + "/.local/share";
    const std::tuple<const char *, const char *, std::string> rows[] = {
        {"/h", "/d//x/", "/d/x"}, {"/h", "", "/h/.local/share"}, {"h", "", byDatabase},
        {"", "", byDatabase},     {"/h", "d", byDatabase},
    };
    for (const auto &[user, data, folder] : rows) {
        ::setenv("HOME", user, 1);
        ::setenv("XDG_DATA_HOME", data, 1);
        EXPECT_EQ(platform::applicationSupportDirectory(), folder) << user << ' ' << data;
    }
    EXPECT_EQ(platform::mainScreenSize(), std::pair(0.0, 0.0)) << "without an application";
    // Applications are those with an entry.
    test::writeFile(home / "d/applications/com.example.foo.desktop", "");
    fs::create_directory(home / "d/applications/com.example.folder.desktop");
    ::setenv("XDG_DATA_DIRS", ("d:" + (home / "d")).c_str(), 1);
    EXPECT_TRUE(platform::isApplicationInstalled("com.example.foo"));
    for (const char *none : {"com.example.folder", "", "../applications/com.example.foo"})
        EXPECT_FALSE(platform::isApplicationInstalled(none)) << none;
}

TEST_F(SandboxPlatform, UpdateInPlaceIsNotSeen)
{
    const std::string self = home / "A.app/Contents/MacOS/a";
    if (const char *installed = std::getenv("OND_TEST_INSTALLED")) { // a process that nobody has asked for anything
        fs::rename(std::string(installed) + ".new", installed);
        EXPECT_EQ(MacConfigPath::GetInstance()->GetMainAppName(), "A");
        EXPECT_EQ(MacPath::getAppFullPath(), installed);
        fs::remove(installed);
        EXPECT_EQ(MacConfigPath::GetCurrentExePath(), installed);
        return;
    }
    fs::create_directories(fs::path(self).parent_path());
    fs::copy_file("/proc/self/exe", self);
    test::writeFile(self + ".new", "");
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    ::setenv("OND_TEST_INSTALLED", self.c_str(), 1);
    process.start(QString::fromStdString(self), {"--gtest_filter=SandboxPlatform.UpdateInPlaceIsNotSeen"});
    EXPECT_TRUE(process.waitForFinished(-1));
    EXPECT_EQ(std::pair(process.exitStatus(), process.exitCode()), std::pair(QProcess::NormalExit, 0));
}

TEST_F(SandboxPlatform, WhatHasEndedOrIsNoProcessDoesNotRun)
{
    EXPECT_TRUE(MacSandbox::isRunning(::getpid()));
    const pid_t zombie = ::fork();
    if (zombie == 0)
        ::_exit(0);
    siginfo_t info;
    ::waitid(P_PID, static_cast<id_t>(zombie), &info, WEXITED | WNOWAIT);
    for (const int none : {0, -1, -::getpid(), INT_MAX, zombie})
        EXPECT_FALSE(MacSandbox::isRunning(none)) << none;
}

TEST_F(SandboxPlatform, PanelChoosesWhatItIsAskedFor)
{
    int argc = 0;
    const QApplication application(argc, nullptr);
    test::writeFile(home / "root/folder/file.pdf", "");
    QString title, typed;
    QTimer user; // who types where there are files
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (auto *panel = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            const bool hasFiles = !panel->testOption(QFileDialog::ShowDirsOnly);
            panel->findChild<QLineEdit *>("fileNameEdit")->setText(hasFiles ? typed : "");
            title = panel->windowTitle();
            static_cast<QDialog *>(panel)->accept();
        }
    });
    user.start(1);
    Lines chosen;
    for (const char *name : {"folder/file.pdf", "folder"}) {
        typed = name;
        EXPECT_TRUE(MacSandbox::openNSFilePanel(home / "root", false, "", chosen));
    }
    EXPECT_EQ(chosen, (Lines{home / "root/folder/file.pdf", home / "root/folder"}));
    EXPECT_TRUE(MacSandbox::requestPermission(home / "root/", ""));
    EXPECT_EQ(title.toStdString(), "授予访问权限 – " + (home / "root"));
}
