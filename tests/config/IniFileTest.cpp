#include "config/IniFile_p.h"

#include "config/QtVersion_p.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

QString q(const std::string &text)
{
    return QString::fromStdString(text);
}

} // namespace

TEST(IniFile, WritersInManyProcessesLoseNothing)
{
    const test::TempDir dir;
    const QString path = q(dir / "store.ini");
    const QStringList keys{"a/x", "a/y", "b/z"};
    EXPECT_TRUE(test::succeedsInProcesses(3, [&](int process) {
        for (int i = 100; i < 150; ++i) // the file keeps its size
            ini::change(path, [&, key = keys[process]](QSettings &settings) {
                EXPECT_TRUE(i == 100 || settings.value(key).toInt() == i - 1) << "lost or old";
                settings.setValue(key, i);
            });
    }));
    for (const QString &key : keys)
        EXPECT_EQ(QSettings(path, QSettings::IniFormat).value(key), "149");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 1) << "no lock file stays behind";
}

TEST(IniFile, EveryWriteHasATimeOfItsOwn)
{
    const test::TempDir dir;
    const std::string path = dir / "store.ini";
    test::writeFile(path, "[s]\nk=1\n");
    const auto later = fs::file_time_type::clock::now() + std::chrono::hours(1); // as after a clock that was set back
    fs::last_write_time(path, later);

    ini::change(q(path), [](QSettings &settings) { settings.setValue("s/k", 2); });
    const auto saved = fs::last_write_time(path);
    EXPECT_GE(saved, later + std::chrono::milliseconds(1));
    ini::change(q(path), [](QSettings &) {});
    EXPECT_EQ(fs::last_write_time(path), saved) << "nothing was set";
    EXPECT_TRUE(ini::setValue(q(path), "s", "k", "3"));
    EXPECT_GE(fs::last_write_time(path), saved + std::chrono::milliseconds(1));
}

TEST(IniFile, SetsOneValueAndLeavesTheRest)
{
    const std::tuple<const char *, const char *, const char *> rows[] = {
        // name, before, after
        {"missing file", nullptr, "[s]\nk=9\n"},
        {"value", "; why\n[s]\nr=A\\{b}, c\n k = 12 \nz=\n[t]\nk=1",
         "; why\n[s]\nr=A\\{b}, c\n k = 9 \nz=\n[t]\nk=1\n"},
        {"key missing", "[t]\r\nk=1\r\n[s]\r\nl=2\r\n", "[t]\r\nk=1\r\n[s]\r\nk=9\r\nl=2\r\n"},
        {"section missing", "k=1\n[t]\n#k=2", "k=1\n[t]\n#k=2\n[s]\nk=9\n"},
        {"twice", "[s]\nk=1\n[t]\n[s]\nk=2\nk=3\n", "[s]\nk=1\n[t]\n[s]\nk=2\nk=9\n"},
        {"byte-order mark", "\xEF\xBB\xBF[s]\nk=1\n", "\xEF\xBB\xBF[s]\nk=9\n"},
        {"Latin-1 and noise", "[s\n\xFC=\xE9\n[s]\n\x01\nk=1\n", "[s\n\xFC=\xE9\n[s]\n\x01\nk=9\n"},
    };
    for (const auto &[name, before, after] : rows) {
        const test::TempDir dir;
        const std::string path = dir / "ü.ini";
        if (before)
            test::writeFile(path, before);
        EXPECT_TRUE(ini::setValue(q(path), "s", "k", "9")) << name;
        EXPECT_EQ(test::readFile(path), after) << name;
        EXPECT_EQ(QSettings(q(path), QSettings::IniFormat).value("s/k").toInt(), 9) << name;
    }
}

TEST(IniFile, TextsKeepTheirCommas)
{
    const std::pair<const char *, const char *> rows[] = {
        {"[s]\nk=© 2024 Vant, Inc.,all ,  rights\n", "© 2024 Vant, Inc.,all ,  rights"},
        {"[s]\nk=\"a, b\" , c ; note, d\n", "a, b , c"},
        {"[s]\nk=\\x7248\\x6743, 100% @home\n", "版权, 100% @home"},
        {"[s]\nk=ask, @home, @Point(1 2)\n", "ask, @home, "},
        {"\xEF\xBB\xBF[s]\r\nk=1\n[t]\nk=2\n[s]\nk=ü, b\r\n", "ü, b"},
        {"[s]\nl=a, b\n", "d"},
    };
    for (const auto &[content, text] : rows) {
        const test::TempDir dir;
        test::writeFile(dir / "ü.ini", content);
        QSettings settings(ini::readable(q(dir / "ü.ini")), QSettings::IniFormat);
        qt::readAsUtf8(settings);
        EXPECT_EQ(ini::text(settings, "s/k", "d"), text) << content;
    }
}

TEST(IniFile, WhatIsNotSoundIsLeftAlone)
{
    const test::TempDir dir;
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    test::writeFile(dir / "huge", "[s]\nk=1\n");
    fs::resize_file(dir / "huge", (16U << 20) + 1);
    for (const QString &path : {q(dir / "fifo"), q(dir / "huge"), q(dir.path()), QString(), QString(5000, 'x')}) {
        EXPECT_FALSE(ini::setValue(path, "s", "k", "9")) << qPrintable(path);
        ini::change(path, [](QSettings &) { FAIL(); });
        EXPECT_EQ(QSettings(ini::readable(path), QSettings::IniFormat).value("s/k", 7), 7) << qPrintable(path);
    }
    EXPECT_FALSE(ini::setValue(q(dir / "fifo/store.ini"), "s", "k", "9")) << "no folder";
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 2) << "nothing was added";
    fs::create_directory(dir / "store.ini.lock");
    EXPECT_FALSE(ini::isWritable(q(dir / "store.ini"))) << "QSettings would wait for the lock for good";
}

TEST(IniFile, SerializedValuesAreNoticed)
{
    const std::pair<const char *, bool> rows[] = {
        {"@Size(1 2)", true},
        {R"(@Variant(\0\0\0\t\x7f\xff\xff\xf0))", false},
        {R"(me@example.com, \x40, \\Variant()", true},
        {R"(\x10040Var"iant("\0))", false},
        {"@Vari\\\r\na\\zn\\164(\\0)", false},
    };
    const test::TempDir dir;
    const QString path = q(dir / "store.ini");
    for (const auto &[text, isSound] : rows) {
        test::writeFile(dir / "store.ini", std::string("[s]\nk=") + text + "\n");
        EXPECT_EQ(ini::readable(path) == path, isSound) << text;
        EXPECT_EQ(ini::isWritable(path), isSound) << text;
    }
}
