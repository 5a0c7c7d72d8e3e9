#include "config/MacReg.h"

#include "tests/support/Eventually.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/OwnProcess.h"

#include <QCoreApplication>
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
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    MacReg reg;
    EXPECT_FALSE(reg.open("common", true)) << "nothing was stored yet";
    EXPECT_TRUE(fs::is_empty(m_bundle / m_folder)) << "made by looking too";
    reg.setValue("x", 1);
    EXPECT_FALSE(reg.hasKey("x") || reg.sync());

    ASSERT_TRUE(reg.open("common", false));
    reg.setValue("language/current_language", "en");
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(fs::exists(fileOf("common"))) << "an event loop would write without our lock";
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

TEST_F(MacRegTest, BadFilesHoldNothingAndAreWrittenAfresh)
{
    const std::pair<const char *, std::string> rows[] = {
        {"binary", std::string("\0\xff\x01[\n=\n]\x80", 9)},
        {"byte-order mark and CRLF", "\xEF\xBB\xBF[General]\r\nkept=1\r\n"},
        {"5 MB", "kept=1\nlong=" + std::string(5 << 20, 'x') + "\n"},
    };
    for (const auto &[name, content] : rows) {
        const char *kept = content.find("kept") == std::string::npos ? "default" : "1";
        test::writeFile(fileOf(name), content);
        EXPECT_EQ(stored(name, "kept"), kept) << name;
        store(name, "new/value", "v");
        EXPECT_EQ(stored(name, "kept"), kept) << name;
        EXPECT_NE(test::readFile(fileOf(name)).find("[new]\nvalue=v\n"), std::string::npos) << name;
    }
    fs::create_directories(fileOf("folder"));
    fs::create_directories(fileOf("locked") + ".lock"); // which is waited for without end
    const std::string hostile = R"(k=@Variant(\0\0\0\t\x7f\xff\xff\xf0))";
    test::writeFile(fileOf("hostile"), "x=0\n" + hostile + "\n");
    for (const char *key : {"folder", "locked", "hostile"}) {
        store(key, "x", "1");
        EXPECT_EQ(stored(key, "x"), "default") << key;
    }
    EXPECT_EQ(test::readFile(fileOf("hostile")), "x=0\n" + hostile + "\n");
    store("types", "map", QVariantMap{{"a", 1}});
    store("types", "text", "@Variant(");
    EXPECT_EQ(stored("types", "map"), "default") << "it has no text form";
    EXPECT_EQ(stored("types", "text"), "@Variant(");
}

TEST_F(MacRegTest, ProcessesLoseNothingOfEachOther)
{
    EXPECT_TRUE(test::succeedsInProcesses(2, [](int process) {
        for (int i = 0; i < 20; ++i)
            store("shared", QString("%1/%2").arg(process).arg(i), "x");
    }));
    const std::string content = test::readFile(fileOf("shared"));
    EXPECT_EQ(std::count(content.begin(), content.end(), '='), 40);
}

TEST_F(MacRegTest, ThreadsShareObjectsAndKeys)
{
    MacReg shared;
    ASSERT_TRUE(shared.open("threads", false));
    test::onThreads(40, [&shared](int i) {
        const QString name = QString::number(i);
        shared.setValue("shared/" + name, name);
        store("threads", "own/" + name, name);
        shared.sync();
    });
    const std::string content = test::readFile(fileOf("threads"));
    EXPECT_EQ(std::count(content.begin(), content.end(), '='), 80);
}
