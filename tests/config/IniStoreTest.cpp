#include "config/ini/IniStore_p.h"

#include "tests/support/Eventually.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestFiles.h"

#include <QPoint>
#include <QSettings>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

QString q(const std::string &text)
{
    return QString::fromStdString(text);
}

ini::Content contentOf(const std::string &bytes)
{
    return ini::Content(QByteArray::fromStdString(bytes));
}

/// Sets `i` of 30 values, each of which it is told about, one by one.
void setMany(const QString &path, const QString &section)
{
    for (int i = 0; i < 30; ++i)
        EXPECT_TRUE(ini::change(path, {{section + QString::number(i), QByteArray::number(i)}}));
}

} // namespace

// What files that others wrote say, and what they say with s/k set: everything else stays as it stands.
TEST(IniContent, OddFilesAreReadAsQSettingsDoesAndChangedInPlace)
{
    const std::tuple<const char *, std::string, const char *, std::string> rows[] = {
        {"missing", "", "-", "[s]\nk=9\n"},
        {"order, comments, no last line end", "; why\n[s]\n k = 12 ; note\nz=A\\{b}, c\n[t]\nk=1", "12",
         "; why\n[s]\n k = 9 ; note\nz=A\\{b}, c\n[t]\nk=1"},
        {"new key", "[s]\na=1 ; note\n\n[t]\nk=2\n", "-", "[s]\na=1 ; note\nk=9\n\n[t]\nk=2\n"},
        {"new section, no last line end", "x=1\n[t]\nk=1", "-", "x=1\n[t]\nk=1\n\n[s]\nk=9\n"},
        {"empty value, no last line end", "[s]\nl=", "-", "[s]\nl=\nk=9"},
        {"CR alone", "[t]\rk=1\r[s]\rk=2\r", "2", "[t]\rk=1\r[s]\rk=9\r"},
        {"CRLF", "[s]\r\nl=2\r\n", "-", "[s]\r\nl=2\r\nk=9\r\n"},
        {"section and key twice", "[s]\nk=1\n[t]\n[s]\nk=2\nk=3\n", "3", "[s]\nk=1\n[t]\n[s]\nk=2\nk=9\n"},
        {"byte-order mark", "\xEF\xBB\xBF[s]\nk=\xC3\xBC\n", "ü", "\xEF\xBB\xBF[s]\nk=9\n"},
        {"Latin-1 and noise", "[s\n\xFC=\xE9\n[s]\n\x01\nk=\xFC\n", "ü", "[s\n\xFC=\xE9\n[s]\n\x01\nk=9\n"},
        {"escaped name", "[%73]\n%6B=a\\x41\\n\\q\n", "aA\n", "[%73]\n%6B=9\n"},
        {"line goes on", "[s]\nk=a\\\r\nb\\", "ab", "[s]\nk=9"},
        {"escaped line end in front", "[s]\nl=\\\r\r", "-", "[s]\nk=9\nl=\\\r\r"},
        {"open quotes in front", "[s]\nl=\"\nk=1\n", "-", "[s]\nk=9\nl=\"\nk=1\n"},
        {"open quotes without a section", "l=\"\n", "-", "[s]\nk=9\n\n[General]\nl=\"\n"},
        {"backslash at the end", "[r]\nl=1\\\n", "-", "[r]\n\n[s]\nk=9\n\n[r]\nl=1\\\n"},
        {"serialized", "[s]\nk=@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xf0)\nl=1\n", "-", "[s]\nk=9\nl=1\n"},
        {"date", "[s]\nk=@DateTime(\\0\\0\\0\\x9\\0\\x7f\\xff\\xff\\xff\\xff)\n", "-", "[s]\nk=9\n"},
        {"serialized in a list", "[s]\nk=a, @Vari\\x61nt(\\0)\n", "-", "[s]\nk=9\n"},
    };
    for (const auto &[name, before, value, after] : rows) {
        const ini::Content content = contentOf(before);
        EXPECT_EQ(content.value("s/k", "-").toString(), value) << name;
        EXPECT_EQ(content.with({{"s/k", "9"}}).toStdString(), after) << name;
        EXPECT_EQ(contentOf(after).value("s/k", "-"), "9") << name;
    }
}

TEST(IniContent, TextsKeepTheirCommas)
{
    const std::pair<const char *, const char *> rows[] = {
        {"© 2024 Vant, Inc.,all ,  rights", "© 2024 Vant, Inc.,all ,  rights"},
        {"\"a, b\" , c ; note, d", "a, b , c"},
        {"\\x7248\\x6743, 100% @home", "版权, 100% @home"},
        {"ask, @home, @Point(1 2)", "ask, @home, @Point(1 2)"},
    };
    for (const auto &[raw, text] : rows)
        EXPECT_EQ(ini::Content("k=" + QByteArray(raw), true).text("k"), text) << raw;
}

// The bytes of a new file are those of QSettings, and so are the values.
TEST(IniStore, QSettingsWritesAndReadsTheSame)
{
    const test::TempDir dir;
    const std::pair<const char *, QVariant> rows[] = {
        {"z/text", "see @Variant(x); a,b=\"c\\\" äöü € 😀 \x7f"},
        {"a/mark", "@Variant("},
        {"General/x y", " blank "},
        {"%General/a/b", QString::fromLatin1("null\0F1", 7)},
        {"ü", QByteArray("\0\x80\xff\x31", 4)},
        {"list", QStringList{"", "a, b", "@c"}},
        {"mixed", QVariantList{1, QPoint(-1, 2)}},
        {"a/empty", QStringList()},
        {"a/number", 4.5},
    };
    {
        QSettings theirs(q(dir / "theirs.ini"), QSettings::IniFormat);
        for (const auto &[key, value] : rows)
            theirs.setValue(key, value);
    }
    ini::Changes changes;
    for (const auto &[key, value] : rows)
        changes[key] = ini::stored(value).value();
    ASSERT_TRUE(ini::change(q(dir / "ours.ini"), changes));
    const bool isQt5 = qVersion()[0] == '5'; // others write letters beyond ASCII as they are
    if (isQt5) {
        EXPECT_EQ(test::readFile(dir / "ours.ini"), test::readFile(dir / "theirs.ini"));
    }
    const QSettings reader(q(dir / "ours.ini"), QSettings::IniFormat);
    for (const auto &[key, value] : rows)
        EXPECT_EQ(ini::load(q(dir / (isQt5 ? "theirs.ini" : "ours.ini"))).value(key, "-"), reader.value(key)) << key;
    EXPECT_EQ(fs::status(dir / "ours.ini").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_FALSE(ini::stored(QVariantMap{{"a", 1}})) << "it has no text form";
}

TEST(IniStore, WhatIsNotSoundIsLeftAlone)
{
    const test::TempDir dir;
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    test::writeFile(dir / "huge", "[s]\nk=1\n");
    fs::resize_file(dir / "huge", (16U << 20) + 1);
    for (const QString &path : {q(dir / "fifo"), q(dir / "huge"), q(dir.path()), QString(), QString(5000, 'x')}) {
        EXPECT_FALSE(ini::change(path, {{"s/k", "9"}})) << qPrintable(path);
        EXPECT_EQ(ini::load(path).value("s/k", 7), 7) << qPrintable(path);
    }
    EXPECT_FALSE(ini::change(q(dir / "fifo/store.ini"), {{"s/k", "9"}})) << "no folder";
    EXPECT_FALSE(ini::change(q(dir / "store.ini"), {{"s/k", QByteArray(16 << 20, 'x')}})) << "nobody would read it";
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 2) << "nothing was added";
}

TEST(IniStore, WritersLoseNothingOfEachOther)
{
    const test::TempDir dir;
    const QString path = q(dir / "store.ini");
    EXPECT_TRUE(test::succeedsInProcesses(4, [&](int process) {
        if (process == 0) { // a program with its own QSettings
            for (int i = 0; i < 30; ++i) {
                QSettings settings(path, QSettings::IniFormat);
                settings.setValue("plain/" + QString::number(i), i);
            }
        } else if (process == 1)
            test::onThreads(3, [&](int i) { setMany(path, QString("thread%1/").arg(i)); });
        else
            setMany(path, QString("process%1/").arg(process));
    }));
    EXPECT_EQ(ini::load(path).values().size(), 6 * 30);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 1) << "no lock file stays behind";
}

TEST(IniStore, NoRewriteIsMissed)
{
    const test::TempDir dir;
    const std::string path = dir / "store.ini";
    const auto rewrite = [&](int value) { // in place, of the same size, and with the same time
        test::writeFile(path, "k=" + std::to_string(value) + "\n");
        fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1));
        EXPECT_EQ(ini::load(q(path)).value("k"), QString::number(value));
    };
    for (int i = 0; i < 100; ++i)
        rewrite(i / 2 % 10);
    struct stat status
    {
    };
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_TRUE(test::eventually([&] { return std::time(nullptr) > status.st_ctime + 2; })) << "so that it is kept";
    EXPECT_EQ(ini::load(q(path)).value("k"), "9");
    EXPECT_EQ(ini::load(q(path)).value("/k"), "9");
    rewrite(1);
    fs::remove(path);
    EXPECT_EQ(ini::load(q(path)).value("k", 7), 7);
}

TEST(IniStore, EveryWriteHasATimeOfItsOwn)
{
    const test::TempDir dir;
    const std::string path = dir / "store.ini";
    test::writeFile(path, "k=1\n");
    const auto later = fs::file_time_type::clock::now() + std::chrono::hours(1); // as after a clock that was set back
    fs::last_write_time(path, later);
    EXPECT_TRUE(ini::change(q(path), {{"k", "2"}}));
    EXPECT_GT(fs::last_write_time(path), later - std::chrono::milliseconds(1));
    QSettings settings(q(path), QSettings::IniFormat);
    EXPECT_EQ(settings.value("k"), "2");
    EXPECT_TRUE(ini::change(q(path), {{"k", "3"}}));
    settings.sync();
    EXPECT_EQ(settings.value("k"), "3") << "it tells by size and time that there is something new";
}

TEST(IniStore, FilesStayTheirOwners)
{
    const test::TempDir dir;
    const std::string path = dir / "store.ini";
    test::writeFile(path, "k=1\n");
    if (::chown(path.c_str(), 1, 1) != 0)
        GTEST_SKIP() << "only an administrator can give files away";
    EXPECT_TRUE(ini::change(q(path), {{"k", "2"}}));
    struct stat status
    {
    };
    EXPECT_TRUE(::stat(path.c_str(), &status) == 0 && status.st_uid == 1 && status.st_gid == 1);
}

TEST(IniStore, KilledWritersLeaveNothingForGood)
{
    const test::TempDir dir;
    const std::string path = dir / "store.ini";
    const pid_t writer = ::fork();
    if (writer == 0) {
        ::alarm(600); // should nobody end it
        for (int i = 0;; ++i)
            ini::change(q(path), {{"k", QByteArray(1 << 20, static_cast<char>('0' + i % 10))}});
    }
    std::string left;
    EXPECT_TRUE(test::eventually([&] {
        for (fs::directory_iterator entry(dir.path()), end; left.empty() && entry != end; ++entry)
            left = entry->path() == path || entry->path() == path + ".lock" ? "" : entry->path().string();
        return !left.empty();
    }));
    ASSERT_TRUE(::kill(writer, SIGKILL) == 0 && ::waitpid(writer, nullptr, 0) == writer);
    const std::function<void()> rows[] = {[&] { test::writeFile(left, "[General]\nk="); },
                                          [&] { fs::create_symlink(path, left); },
                                          [&] { ASSERT_EQ(::mkfifo(left.c_str(), 0600), 0); }};
    for (const auto &put : rows) {
        fs::remove(left);
        put();
        EXPECT_TRUE(ini::change(q(path), {{"k", "1"}}));
        EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 1);
        EXPECT_TRUE(ini::change(q(path), {{"k", "0"}}));
    }
    fs::create_directory(left);
    EXPECT_FALSE(ini::change(q(path), {{"k", "1"}}));
    EXPECT_EQ(test::readFile(path), "[General]\nk=0\n");
}

TEST(IniStore, LocksThatNobodyHoldsEnd)
{
    const test::TempDir dir;
    test::writeFile(dir / "x.lock", "1\nprogram\nelsewhere\n");
    EXPECT_TRUE(ini::change(q(dir / "x"), {{"k", "1"}}));
    EXPECT_FALSE(fs::exists(dir / "x.lock"));
    test::writeFile(dir / "mine", "kept");
    fs::create_hard_link(dir / "mine", dir / "link.lock");
    fs::last_write_time(dir / "mine", fs::file_time_type::clock::now() - std::chrono::hours(1));
    EXPECT_FALSE(ini::change(q(dir / "link"), {{"k", "1"}}));
    EXPECT_EQ(test::readFile(dir / "mine"), "kept");
    fs::create_directory(dir / "folder.lock");
    EXPECT_FALSE(ini::change(q(dir / "folder"), {{"k", "1"}}));

    const ini::Turn turn(q(dir / "held")); // by a process that is stopped, for all that others can tell
    fs::last_write_time(dir / "held.lock", fs::file_time_type::clock::now() - std::chrono::hours(1));
    EXPECT_TRUE(turn.isOurs());
    EXPECT_FALSE(ini::change(q(dir / "held"), {{"k", "1"}}));
    EXPECT_FALSE(fs::exists(dir / "held"));
}
