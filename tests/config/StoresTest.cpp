#include "config/MacReg.h"

#include "config/ConfigFileUtil.h"
#include "tests/support/Concurrency.h"
#include "tests/support/FakePlatform.h"

#include <QDateTime>
#include <QSettings>
#include <QVariant>
#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

using U = ConfigFileUtil;

struct Stores : testing::Test
{
    [[nodiscard]] std::string fileOf(const std::string &key) const { return m_bundle / (m_folder + key + ".ini"); }

    static std::string stored(const QString &key, const QString &name)
    {
        MacReg reg;
        reg.open(key, true);
        return reg.value(name, "default").toString().toStdString();
    }

    static void store(const QString &key, const QString &name, const QVariant &value)
    {
        MacReg reg;
        reg.open(key, false);
        reg.setValue(name, value);
    }

    const test::FakeBundle m_bundle;
    const std::string m_folder = "support/Foo/reg/";
    const std::string m_counters = m_bundle / "support/Foo/config_count.ini";
    const std::string m_bundled = m_bundle / "Foo.app/Contents/Resources/cfgdata/cfgdata.ini";
};

TEST_F(Stores, RegistryIsWrittenBySyncAndWhenTheKeyIsClosed)
{
    MacReg reg;
    EXPECT_FALSE(reg.open("common", true)) << "nothing was stored yet";
    EXPECT_TRUE(fs::is_empty(m_bundle / m_folder)) << "made by looking too";
    reg.setValue("x", 1);
    EXPECT_FALSE(reg.hasKey("x"));
    EXPECT_FALSE(reg.sync());

    ASSERT_TRUE(reg.open("common", false));
    reg.setValue("language/current_language", "en");
    EXPECT_FALSE(fs::exists(fileOf("common")));
    EXPECT_TRUE(reg.sync());
    EXPECT_EQ(test::readFile(fileOf("common")), "[language]\ncurrent_language=en\n");
    reg.setValue("x", 1);
    ASSERT_TRUE(reg.open("software/other", false));
    EXPECT_FALSE(reg.hasKey("x"));
    EXPECT_EQ(stored("common", "x"), "1");
}

TEST_F(Stores, NothingOutsideTheRegistryIsReached)
{
    const std::string outside = m_bundle / "outside";
    test::writeFile(outside + "/x.ini", "secret=1\n");
    test::writeFile(fileOf("sub/within"), "");
    fs::create_symlink("sub/within.ini", fileOf("within"));
    fs::create_directory_symlink(outside, m_bundle / (m_folder + "folder"));
    fs::create_symlink(outside + "/x.ini", fileOf("file"));
    fs::create_symlink(outside + "/new.ini", fileOf("dangling"));
    ASSERT_EQ(::mkfifo(fileOf("pipe").c_str(), 0600), 0);

    const QStringList opened = QStringList{"sub/key", "sub/../key", "..", "a/..", "within"} << QString(300, 'k');
    const QStringList refused = QStringList{"../x", "a/../../x", "../../../outside/x", "folder/x", "file", "dangling"}
        << "pipe" << QString("a") + QChar::Null << outside.c_str() + QString("/x");
    for (const QString &key : opened + refused) {
        MacReg reg;
        EXPECT_EQ(reg.open(key, false), opened.contains(key)) << key.toStdString();
        EXPECT_FALSE(reg.hasKey("secret"));
        reg.setValue("z", 1);
    }
    EXPECT_TRUE(fs::exists(fileOf("key")));
    EXPECT_TRUE(fs::exists(fileOf("a/..")));
    EXPECT_EQ(test::readFile(outside + "/x.ini"), "secret=1\n");
    for (const std::string &folder : {outside, m_bundle / "support/Foo"})
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1) << folder;
}

TEST_F(Stores, OddValuesAreTheirOwnMatterAlone)
{
    const std::string odd = "; kept\n[host]\ndate=@DateTime(\\0\\0\\0\\x9\\0\\x7f)\nx=1\n";
    test::writeFile(fileOf("odd"), odd);
    store("odd", "types/map", QVariantMap{{"a", 1}});
    store("odd", "types/time", QDateTime(QDate(2026, 11, 22), QTime(1, 2), Qt::UTC));
    EXPECT_EQ(test::readFile(fileOf("odd")), odd + "\n[types]\ntime=2026-11-22T01:02:00.000Z\n");
    EXPECT_EQ(stored("odd", "host/date"), "default");
    MacReg reg;
    ASSERT_TRUE(reg.open("odd", true));
    EXPECT_EQ(reg.names(), (QStringList{"host/date", "host/x", "types/time"}));
    EXPECT_TRUE(reg.hasKey("host/date")) << "once more, after all were asked for";
    EXPECT_EQ(reg.value("/host//x"), "1") << "one slash, or several";
}

TEST_F(Stores, WhatCannotBeWrittenIsDroppedAndNobodyElseSeesIt)
{
    store("common", "a/b", 1);
    MacReg reg;
    ASSERT_TRUE(reg.open("common", false));
    fs::create_directories(fileOf("common") + ".lock");
    reg.setValue("a/b", 9);
    EXPECT_EQ(reg.value("a/b"), "9");
    EXPECT_EQ(stored("common", "a/b"), "1");
    EXPECT_TRUE(reg.sync()) << "a key is open";
    EXPECT_EQ(reg.value("a/b"), "1") << "what is on the disk";
    fs::create_directories(fileOf("folder"));
    EXPECT_TRUE(reg.open("folder", false)) << "and reads as empty";
}

TEST_F(Stores, ProcessesAndThreadsLoseNothingOfEachOther)
{
    MacReg shared;
    ASSERT_TRUE(shared.open("many", false));
    EXPECT_TRUE(test::succeedsInProcesses(4, [&](int process) {
        test::onThreads(process == 0 ? 3 : 1, [&](int thread) {
            for (int i = 0; i < 30; ++i) {
                const QString name = QString("p%1t%2/%3").arg(process).arg(thread).arg(i);
                if (process == 0) {
                    shared.setValue(name, i);
                    shared.sync();
                } else if (process == 1) // a program with its own QSettings
                    QSettings(fileOf("many").c_str(), QSettings::IniFormat).setValue(name, i);
                else
                    store("many", name, i);
            }
        });
    }));
    const std::string content = test::readFile(fileOf("many"));
    EXPECT_EQ(std::count(content.begin(), content.end(), '='), 6 * 30);
    EXPECT_EQ(std::distance(fs::directory_iterator(m_bundle / m_folder), {}), 1) << "no lock file stays behind";
}

TEST_F(Stores, SettingsStayInTheirFile)
{
    const std::string bundled = "[General]\nk=5\n\n[account]\naccount=103\nwide=4294967297\ntext=\xE4\n";
    test::writeFile(m_bundled, bundled);
    // Wide numbers are cut to 32 bits, as QVariant does; empty keys are refused.
    for (const auto &[key, number] :
         {std::pair("account/account", 103), {"k", 5}, {"account/wide", 1}, {"account/text", 0}, {"", 7}})
        EXPECT_EQ(U::GetCfgdataFileValueInt(key, 7), number) << key;
    EXPECT_EQ(U::GetCfgdataFileValueIntUser("account/account", 7), 7);
    EXPECT_EQ(U::GetLocalAppCfgValueInt("account/account", 7), 7);
    U::SetCfgdataFileValueIntUser("", 5);
    EXPECT_FALSE(fs::exists(m_bundle / "support"));
    EXPECT_FALSE(fs::exists(m_bundled + ".user")) << "nothing to create";
    U::SetLocalAppCfgValueInt("account/account", 12);
    U::SetCfgdataFileValueIntUser("account/account", 13);
    EXPECT_EQ(fs::status(m_bundled + ".user").permissions(), fs::perms(0644)) << "for all users of the application";
    EXPECT_EQ(U::GetLocalAppCfgValueInt("account/account", 7), 12);
    EXPECT_EQ(U::GetCfgdataFileValueIntUser("account/account", 7), 13);
    EXPECT_EQ(test::readFile(m_bundled), bundled);

    EXPECT_EQ(U::GetProductVersion(), "");
    test::writeFile(m_bundle / "Foo.app/Contents/Resources/data/mainversion.ini",
                    "date=1\n[version]\r\ndate= 21. Nov. 2026, 10:00; ü \r\n[other]\ndate=2\n");
    EXPECT_EQ(U::GetProductVersion(), "21. Nov. 2026, 10:00; ü") << "as it stands";
}

TEST_F(Stores, BatchOfCountersIsWholeOrNothing)
{
    std::vector<QString> keys = {"a/x", "y", ""};
    std::vector<int> values = {1, 2, 3};
    U::SetLocalAppCfgForCountValueInt(keys, values, 2);
    U::SetLocalAppCfgForCountValueInt(keys, {1, 2}, 3);
    EXPECT_FALSE(fs::exists(m_counters));
    U::SetLocalAppCfgForCountValueInt(keys, {1, 9, 3}, 3);
    U::SetLocalAppCfgForCountValueInt({"y"}, {2}, 1);
    EXPECT_EQ(test::readFile(m_counters), "[General]\ny=2\n\n[a]\nx=1\n");

    values = {0, 0, 0};
    U::GetLocalAppCfgForCountValueInt(keys, values, 2, 7);
    EXPECT_EQ(values, (std::vector{0, 0, 0}));
    U::GetLocalAppCfgForCountValueInt(keys, values, 3, 7);
    EXPECT_EQ(values, (std::vector{1, 2, 7}));
}

TEST_F(Stores, CounterStoreIsCleared)
{
    U::ClearLocalAppCfgForCount();
    test::writeFile(m_counters, "y=2\n");
    U::ClearLocalAppCfgForCount();
    EXPECT_TRUE(fs::is_empty(m_bundle / "support/Foo"));

    const std::string target = m_bundle / "target";
    test::writeFile(target, "y=2\n");
    fs::permissions(target, fs::perms::owner_read);
    fs::create_symlink(target, m_counters);
    U::ClearLocalAppCfgForCount();
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read) << "what a link leads to is not ours";

    test::writeFile(m_counters + "/a folder cannot be removed as a file", "");
    fs::create_directory(m_counters + ".tmp");
    U::ClearLocalAppCfgForCount();
    EXPECT_FALSE(fs::exists(m_counters)) << "put in the place of an older one";
}
