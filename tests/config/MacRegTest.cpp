#include "config/MacReg.h"

#include "tests/support/Eventually.h"
#include "tests/support/FakePlatform.h"

#include <QDateTime>
#include <QVariant>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

struct MacRegTest : testing::Test
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
};

} // namespace

TEST_F(MacRegTest, ChangesAreWrittenBySyncAndWhenTheKeyIsClosed)
{
    MacReg reg;
    EXPECT_FALSE(reg.open("common", true)) << "nothing was stored yet";
    EXPECT_TRUE(fs::is_empty(m_bundle / m_folder)) << "made by looking too";
    reg.setValue("x", 1);
    EXPECT_FALSE(reg.hasKey("x") || reg.sync());

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

TEST_F(MacRegTest, NothingOutsideTheRegistryIsReached)
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
    EXPECT_TRUE(fs::exists(fileOf("key")) && fs::exists(fileOf("a/..")));
    EXPECT_EQ(fs::file_size(outside + "/x.ini"), 9U);
    for (const std::string &folder : {outside, m_bundle / "support/Foo"})
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1) << folder;
}

TEST_F(MacRegTest, OddValuesAreTheirOwnMatterAlone)
{
    const std::string odd = "; kept\n[host]\ndate=@DateTime(\\0\\0\\0\\x9\\0\\x7f)\nx=1\n";
    test::writeFile(fileOf("odd"), odd);
    store("odd", "types/map", QVariantMap{{"a", 1}});
    store("odd", "types/time", QDateTime(QDate(2026, 11, 22), QTime(1, 2), Qt::UTC));
    EXPECT_EQ(test::readFile(fileOf("odd")), odd + "\n[types]\ntime=2026-11-22T01:02:00.000Z\n");
    EXPECT_EQ(stored("odd", "host/date"), "default");
    MacReg reg;
    ASSERT_TRUE(reg.open("odd", true));
    EXPECT_TRUE(reg.hasKey("host/date") && !reg.hasKey("types/map"));
    EXPECT_EQ(reg.names(), (QStringList{"host/date", "host/x", "types/time"}));
    EXPECT_EQ(reg.value("host/x"), "1") << "once more, after all were asked for";
}

TEST_F(MacRegTest, WhatCannotBeWrittenIsDroppedAndNobodyElseSeesIt)
{
    store("common", "a/b", 1);
    MacReg reg;
    MacReg other;
    ASSERT_TRUE(reg.open("common", false) && other.open("common", false));
    fs::create_directories(fileOf("common") + ".lock");
    reg.setValue("a/b", 9);
    EXPECT_EQ(reg.value("a/b"), "9");
    EXPECT_EQ(other.value("a/b"), "1");
    EXPECT_TRUE(reg.sync()) << "a key is open";
    EXPECT_EQ(reg.value("a/b"), "1") << "what is on the disk";
    fs::remove(fileOf("common") + ".lock");
    store("common", "a/b", 20);
    reg.setValue("a/c", 3);
    EXPECT_TRUE(reg.sync());
    EXPECT_EQ(test::readFile(fileOf("common")), "[a]\nb=20\nc=3\n");
    fs::create_directories(fileOf("folder"));
    store("folder", "x", 1);
    EXPECT_EQ(stored("folder", "x"), "default");
}

TEST_F(MacRegTest, ThreadsShareObjectsAndKeys)
{
    MacReg shared;
    ASSERT_TRUE(shared.open("threads", false));
    test::onThreads(10, [&shared](int i) {
        const QString name = QString::number(i);
        shared.setValue("shared/" + name, name);
        store("threads", "own/" + name, name);
        shared.sync();
    });
    const std::string content = test::readFile(fileOf("threads"));
    EXPECT_EQ(std::count(content.begin(), content.end(), '='), 20);
}
