#include "paths/MacBookmark.h"
#include "paths/MacSandbox.h"
#include "paths/platform/UserDefaults.h"
#include "tests/support/TestFiles.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <fstream>
#include <future>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

// Bookmarks, launches and the panel on the platform that the library ships with.

namespace fs = std::filesystem;

namespace {

using Lines = std::vector<std::string>;
using Bytes = std::vector<unsigned char>;

/// A user with nothing but a folder in an empty home.
class SandboxPlatform : public testing::Test
{
protected:
    SandboxPlatform()
    {
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            ::setenv(name, (m_home / "user").c_str(), 1);
        fs::create_directory(folder());
        ::mkfifo((m_home / "gate").c_str(), 0600);
    }

    [[nodiscard]] std::string folder() const { return m_home / "Ünï=\"1\"\n%"; }
    [[nodiscard]] std::string store() const { return m_home / "user/sandbox_platform_tests/user-defaults.ini"; }

    /// A program that writes its process identifier and arguments, and runs until the gate is opened.
    void writeProgram(const std::string &path) const
    {
        const std::string home = m_home.path().string();
        test::writeFile(path,
                        "#!/bin/sh\nprintf '%s\\n' $$ \"$@\" > " + home + "/out\nread line < " + home + "/gate\n");
        fs::permissions(path, fs::perms::owner_all);
    }
    /// What that program wrote, after it ended.
    [[nodiscard]] std::string outputOf(int pid) const
    {
        std::ofstream(m_home / "gate") << "\n";
        EXPECT_EQ(MacSandbox::waitProcFinish(pid, 0), 0);
        return test::readFile(m_home / "out");
    }

    test::TempDir m_home;
};

/// Whether another process opens the bookmark.
bool opensElsewhere(const std::string &path)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(MacBookmark::openBookmark(path) ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    return status == 0;
}

/// The process that a launch reports, always on another thread.
template <typename Launcher> int launched(Launcher launcher, const MacSandbox::LaunchParams &params)
{
    const auto outcome = std::make_shared<std::promise<int>>();
    const auto report = [outcome, caller = std::this_thread::get_id()](int pid) {
        EXPECT_NE(std::this_thread::get_id(), caller);
        outcome->set_value(pid);
    };
    return launcher(params, report) ? outcome->get_future().get() : 0;
}

/// Calls `act` with the panel as soon as it is shown.
void whenShown(std::function<void(QFileDialog *)> act)
{
    QTimer::singleShot(0, [act = std::move(act)] {
        auto *panel = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        panel ? act(panel) : whenShown(act);
    });
}

void confirm(const QFileDialog *panel)
{
    panel->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open)->click();
}

} // namespace

TEST_F(SandboxPlatform, AnotherProcessFindsTheBookmarkUntilTheFolderIsAnotherOne)
{
    EXPECT_FALSE(MacBookmark::hasBookmark(folder()) || fs::exists(m_home / "user")) << "looking creates nothing";
    ASSERT_TRUE(MacBookmark::createBookmark(folder() + "/"));
    EXPECT_TRUE(opensElsewhere(folder()));

    fs::rename(folder(), m_home / "moved");
    EXPECT_FALSE(MacBookmark::closeBookmark(folder())) << "gone";
    fs::create_directory(folder());
    EXPECT_FALSE(opensElsewhere(folder())) << "stale";
    EXPECT_TRUE(MacBookmark::closeBookmark(folder())) << "a stale bookmark resolves";
    fs::remove(folder());
    fs::rename(m_home / "moved", folder());
    EXPECT_TRUE(opensElsewhere(folder())) << "back again";
}

TEST_F(SandboxPlatform, OnlyWholeDataOfThisVersionResolves)
{
    const Bytes good = MacBookmark::createSharedBookmark(folder());
    ASSERT_FALSE(good.empty());
    std::vector<Bytes> bad{
        good, good, Bytes(200, 0xff), {}, {good.begin(), good.end() - 1}, {good.begin(), good.begin() + 7}};
    ++bad[0][7]; // the version
    bad[1].push_back('x');
    for (const Bytes &data : bad) {
        platform::setUserDefaultsData("vant_pdf_/x", data);
        EXPECT_FALSE(MacBookmark::closeBookmark("/x")) << testing::PrintToString(data);
    }
    platform::setUserDefaultsData("vant_pdf_/x", good);
    EXPECT_TRUE(MacBookmark::closeBookmark("/x"));
}

TEST_F(SandboxPlatform, ProcessesThatWriteAtOnceLoseNothing)
{
    for (int process = 0; process < 4; ++process) {
        if (::fork() != 0)
            continue;
        for (int i = process; i < 400; i += 4)
            platform::setUserDefaultsData(std::to_string(i), Bytes(i, 'x'));
        ::_exit(0);
    }
    while (::wait(nullptr) > 0) { }
    for (int i = 0; i < 400; ++i)
        EXPECT_EQ(platform::userDefaultsData(std::to_string(i)), Bytes(i, 'x')) << i;
}

TEST_F(SandboxPlatform, DamagedStoreKeepsWhatIsWhole)
{
    const Bytes data{0, 255, '\n', '"'};
    platform::setUserDefaultsData("a/b=c", data);
    const std::string good = test::readFile(store());
    for (const std::string &damage : {std::string("cut off=\"AAA"), std::string("a/b%3Dc=\"AAA"),
                                      std::string("a/b%3Dc=\"!!\""), std::string("\0\xff\n", 3)}) {
        test::writeFile(store(), good + damage);
        platform::setUserDefaultsData("new", {});
        EXPECT_EQ(platform::userDefaultsData("a/b=c"), data) << damage;
        EXPECT_EQ(platform::userDefaultsData("new"), Bytes()) << damage;
    }
    fs::remove(store());
    ::mkfifo(store().c_str(), 0600);
    EXPECT_FALSE(MacBookmark::createBookmark(folder())) << "a FIFO is no store, nor waited for";
}

TEST_F(SandboxPlatform, LaunchesWithoutAShell)
{
    const Lines arguments{"", "a b", "$(id)", "'\"\\\n;", "é"};
    writeProgram(m_home / "run it");
    const int pid = launched(MacSandbox::openApp, {m_home / "run it", "", arguments});
    EXPECT_TRUE(MacSandbox::isRunning(pid));
    EXPECT_EQ(outputOf(pid), std::to_string(pid) + "\n\na b\n$(id)\n'\"\\\n;\né\n");

    writeProgram(m_home / "A.app/Contents/MacOS/b");
    test::writeFile(m_home / "A.app/Contents/Info.plist",
                    "<plist><dict><key>CFBundleExecutable</key><string>../../../run it</string></dict></plist>");
    const int bundle = launched(MacSandbox::openURL, {m_home / "A.app/", "x:a b;$(touch y)&`z`'\n--", arguments});
    EXPECT_EQ(outputOf(bundle), std::to_string(bundle) + "\nx:a%20b;$(touch%20y)&%60z%60'%0A--\n");
    for (const char *bad : {"--option", "file", "http://a b/"})
        EXPECT_EQ(launched(MacSandbox::openURL, {m_home / "A.app", bad, arguments}), -1) << bad;
    EXPECT_EQ(launched(MacSandbox::openApp, {m_home / "A.app/Contents", "", arguments}), -1) << "no executable";
}

TEST_F(SandboxPlatform, WhatHasEndedOrIsNoProcessDoesNotRun)
{
    EXPECT_TRUE(MacSandbox::isRunning(::getpid()));
    for (const int none : {0, -1, -::getpid(), INT_MAX})
        EXPECT_FALSE(MacSandbox::isRunning(none)) << none;
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    siginfo_t info;
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
    EXPECT_FALSE(MacSandbox::isRunning(child)) << "a zombie";
}

TEST_F(SandboxPlatform, PanelChoosesFoldersAndFiles)
{
    Lines chosen;
    EXPECT_FALSE(MacSandbox::openNSFilePanel("", true, "", chosen)) << "no application to show it";
    static int argc = 0;
    new QApplication(argc, nullptr); // kept: the offscreen platform leaks its screen when it goes
    const std::string root = m_home / "root";
    test::writeFile(root + "/folder/file.pdf", "");

    whenShown([](QFileDialog *panel) { panel->reject(); });
    EXPECT_FALSE(MacSandbox::requestPermission(root, ""));
    whenShown([](QFileDialog *panel) {
        EXPECT_EQ(panel->labelText(QFileDialog::Accept), "授予访问权限");
        confirm(panel);
    });
    EXPECT_TRUE(MacSandbox::requestPermission(root + "/folder/../", "")) << "confirmed as it opened";
    EXPECT_TRUE(opensElsewhere(root));
    for (const char *name : {"folder", "folder/file.pdf"}) {
        whenShown([name](QFileDialog *panel) {
            panel->findChild<QLineEdit *>("fileNameEdit")->setText(name);
            confirm(panel);
        });
        EXPECT_TRUE(MacSandbox::openNSFilePanel(root, false, "", chosen));
        EXPECT_EQ(chosen.back(), root + "/" + name);
    }
}
