#include "config/MacReg.h"

#include "tests/support/FakePlatform.h"

#include <QCoreApplication>
#include <QDate>
#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class MacRegTest : public testing::Test
{
protected:
    [[nodiscard]] std::string fileOf(const std::string &key) const { return m_bundle / (m_folder + key + ".ini"); }

    static std::string stored(const QString &key, const QString &name)
    {
        MacReg reg;
        reg.open(key, true);
        return reg.value(name, "default").toString().toStdString();
    }

    static void store(const QString &key, const QString &name, const QString &value)
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
    static std::string logged;
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &line) {
        logged += type == QtInfoMsg ? line.toStdString() : "";
    });
    MacReg reg;
    EXPECT_FALSE(reg.open("common", true)) << "nothing was stored yet";
    qInstallMessageHandler(nullptr);
    EXPECT_EQ(logged, "MacReg::open strRegPath = " + fileOf("common"));
    EXPECT_TRUE(fs::is_empty(m_bundle / m_folder)) << "made by looking too";
    reg.setValue("x", 1);
    EXPECT_EQ(reg.value("x", 7).toInt(), 7);
    EXPECT_FALSE(reg.hasKey("x") || reg.sync());

    ASSERT_TRUE(reg.open("common", false));
    reg.setValue("language/current_language", "en");
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(fs::exists(fileOf("common"))) << "an event loop would write without our lock";
    EXPECT_TRUE(reg.sync());
    EXPECT_EQ(test::readFile(fileOf("common")), "[language]\ncurrent_language=en\n");
    EXPECT_EQ(reg.value("", 7).toInt(), 7) << "no name";

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
        {"broken section", "[language\nx\n"},
        {"byte-order mark and CRLF", "\xEF\xBB\xBF[General]\r\nkept=1\r\n"},
        {"5 MB", "kept=1\nlong=" + std::string(5 << 20, 'x') + "\n"},
    };
    for (const auto &[name, content] : rows) {
        const char *kept = content.find("kept") == std::string::npos ? "default" : "1";
        test::writeFile(fileOf(name), content);
        EXPECT_EQ(stored(name, "kept"), kept) << name;
        store(name, "new/value", "v");
        fs::copy_file(fileOf(name), fileOf("copy"), fs::copy_options::overwrite_existing);
        EXPECT_EQ(stored("copy", "new/value"), "v") << name;
        EXPECT_EQ(stored("copy", "kept"), kept) << name;
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
    {
        MacReg reg;
        reg.open("types", false);
        reg.setValue("map", QVariantMap{{"a", 1}});
        reg.setValue("date", QDate(2025, 3, 7));
        reg.setValue("text", "@Variant(");
    }
    EXPECT_EQ(stored("types", "map"), "default") << "it has no text form";
    EXPECT_EQ(stored("types", "date"), "2025-03-07");
    EXPECT_EQ(stored("types", "text"), "@Variant(");
}

TEST_F(MacRegTest, ProcessesLoseNothingOfEachOther)
{
    const pid_t other = ::fork();
    for (int i = 0; i < 20; ++i)
        store("shared", (other == 0 ? "theirs/" : "ours/") + QString::number(i), "x");
    if (other == 0)
        ::_exit(0);
    ::waitpid(other, nullptr, 0);
    const std::string content = test::readFile(fileOf("shared"));
    EXPECT_EQ(std::count(content.begin(), content.end(), '='), 40);

    // By its time processes notice that a file changed, the more so when its size stays.
    const fs::file_time_type before = fs::last_write_time(fileOf("shared")) + std::chrono::hours(1);
    fs::last_write_time(fileOf("shared"), before);
    store("shared", "ours/0", "y");
    EXPECT_GT(fs::last_write_time(fileOf("shared")), before) << "a version has the time of an earlier one";
}

TEST_F(MacRegTest, ThreadsShareObjectsAndKeys)
{
    MacReg shared;
    ASSERT_TRUE(shared.open("threads", false));
    std::vector<std::future<void>> threads(40);
    for (std::size_t i = 0; i < threads.size(); ++i)
        threads[i] = std::async(std::launch::async, [&shared, name = QString::number(i)] {
            shared.setValue("shared/" + name, name);
            store("threads", "own/" + name, name);
            shared.sync();
        });
    threads.clear(); // joins them
    const std::string content = test::readFile(fileOf("threads"));
    EXPECT_EQ(std::count(content.begin(), content.end(), '='), 80);
}
