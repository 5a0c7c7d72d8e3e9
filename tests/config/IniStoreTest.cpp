#include "config/ini/IniStore_p.h"

#include "tests/support/Concurrency.h"
#include "tests/support/TestFiles.h"

#include <QRect>
#include <QSettings>
#include <csignal>
#include <ctime>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>

namespace fs = std::filesystem;

using Status = struct stat;

static QString q(const std::string &text)
{
    return QString::fromStdString(text);
}

struct IniStore : testing::Test
{
    [[nodiscard]] bool set(const QByteArray &value) const { return ini::change(name, {{"k", value}}); }
    [[nodiscard]] auto entries() const { return std::distance(fs::directory_iterator(dir.path()), {}); }

    const test::TempDir dir;
    const std::string path = dir / "store.ini";
    const QString name = q(path);
};

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
        {"UTF-8, as QSettings of Qt 6 has it", "[s]\nl=\xFC\nk=\xC3\xBC\n", "ü", "[s]\nl=\xFC\nk=9\n"},
        {"Latin-1 and noise", "[s\n\xFC=\xE9\n[s]\n\x01\nk=\xFC\n", "ü", "[s\n\xFC=\xE9\n[s]\n\x01\nk=9\n"},
        {"escaped name", "[%73]\n%6B=a\\x41\\n\\q\n", "aA\n", "[%73]\n%6B=9\n"},
        {"line goes on", "[s]\nk=a\\\r\nb\\", "ab", "[s]\nk=9"},
        {"escaped line end in front", "[s]\nl=\\\r\r", "-", "[s]\nk=9\nl=\\\r\r"},
        {"open quotes in front", "[s]\nl=\"\nk=1\n", "-", "[s]\nk=9\nl=\"\nk=1\n"},
        {"open quotes without a section", "l=\"\n", "-", "[s]\nk=9\n\n[General]\nl=\"\n"},
        {"backslash at the end", "[r]\nl=1\\\n", "-", "[r]\n\n[s]\nk=9\n\n[r]\nl=1\\\n"},
        {"date", "[s]\nk=@DateTime(\\0\\0\\0\\x9\\0\\x7f\\xff\\xff\\xff\\xff)\n", "-", "[s]\nk=9\n"},
        {"serialized in a list", "[s]\nk=a, @Vari\\x61nt(\\0)\n", "-", "[s]\nk=9\n"},
    };
    for (const auto &[name, before, value, after] : rows) {
        const ini::Content content(QByteArray::fromStdString(before));
        EXPECT_EQ(content.value("s/k", "-").toString(), value) << name;
        const QByteArray changed = content.with({{"s/k", "9"}});
        EXPECT_EQ(changed.toStdString(), after) << name;
        EXPECT_EQ(ini::Content(changed).value("s/k", "-"), "9") << name;
    }
}

// Hours, if each line had the name of its section once more.
TEST(IniContent, LinesOfASectionWithALongNameTakeNoMoreThanTheyAre)
{
    const QByteArray lines = QByteArray("=\nk=2\n").repeated(200'000);
    ini::Content content("[t]\nk=1\n[" + QByteArray(2'000'000, 's') + "]\n" + lines);
    EXPECT_EQ(content.value("t/k"), "1");
    EXPECT_EQ(content.with({{"t/k", "9"}}).left(7), "[t]\nk=9");
    content.makeIndex();
    EXPECT_TRUE(content.keys().contains("t/k"));
}

TEST(IniContent, TextsKeepTheirCommas)
{
    const auto text = [](const QByteArray &raw) { return ini::Content("k=" + raw, true).text("k"); };
    EXPECT_EQ(text("© 2024 Vant, Inc.,all ,  rights"), "© 2024 Vant, Inc.,all ,  rights");
    EXPECT_EQ(text("\"a, b\" , c ; note, d"), "a, b , c");
    EXPECT_EQ(text("\\x7248\\x6743, @Point(1 2)"), "版权, @Point(1 2)");
    const QString marks(100'000, QChar(QChar::ByteOrderMark)); // read in pieces
    EXPECT_TRUE(text(marks.toUtf8()) == marks);
    EXPECT_EQ(ini::Content(QByteArray("k=\0\xFC", 4)).text("k"), QString::fromLatin1("\0\xFC", 2));
}

// The bytes of a new file are those of QSettings, and so are the values.
TEST_F(IniStore, QSettingsWritesAndReadsTheSame)
{
    const std::map<QString, QVariant> rows = {
        {"z/text", "see @Variant(x); a,b=\"c\\\" äöü € 😀 \x7f"},
        {"a/mark", "@Variant("},
        {"General/x y", " blank "},
        {"%General/a/b", QString::fromLatin1("null\0F1", 7)},
        {"ü", QByteArray("\0\x80\xff\x31", 4)},
        {"list", QStringList{"", "a, b", "@c"}},
        {"mixed", QVariantList{1, QRect(1, 2, 3, -4), QSize(-1, 3), QPoint(-1, 2)}},
        {"a/empty", QStringList()},
        {"a/number", 4.5},
    };
    QSettings theirs(q(dir / "theirs.ini"), QSettings::IniFormat);
    ini::Changes changes;
    for (const auto &[key, value] : rows) {
        theirs.setValue(key, value);
        changes[key] = ini::stored(value).value();
    }
    theirs.sync();
    ASSERT_TRUE(ini::change(name, changes));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0600));
    const bool isQt5 = qVersion()[0] == '5'; // others write letters beyond ASCII as they are
    if (isQt5) {
        EXPECT_EQ(test::readFile(path), test::readFile(dir / "theirs.ini"));
    }
    const QSettings reader(name, QSettings::IniFormat);
    for (const auto &[key, value] : rows)
        EXPECT_EQ(ini::load(isQt5 ? theirs.fileName() : name).value(key, "-"), reader.value(key)) << qPrintable(key);
}

TEST_F(IniStore, WhatIsNotSoundIsLeftAlone)
{
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    test::writeFile(dir / "huge", "k=1\n");
    fs::resize_file(dir / "huge", (16U << 20) + 1);
    for (const QString &bad : {q(dir / "fifo"), q(dir / "huge"), q(dir.path()), QString(), QString(5000, 'x')}) {
        EXPECT_FALSE(ini::change(bad, {{"k", "9"}})) << qPrintable(bad);
        EXPECT_EQ(ini::load(bad).value("k", 7), 7) << qPrintable(bad);
    }
    EXPECT_FALSE(ini::change(q(dir / "fifo/store.ini"), {{"k", "9"}})) << "no folder";
    EXPECT_FALSE(set(QByteArray(16 << 20, 'x'))) << "nobody would read it";
    EXPECT_EQ(entries(), 2) << "nothing was added";
}

TEST_F(IniStore, NoRewriteIsMissed)
{
    const auto rewrite = [&](int value) { // in place, of the same size, and with the same time
        test::writeFile(path, "k=" + std::to_string(value) + "\n");
        fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1));
        EXPECT_EQ(ini::load(name).value("k"), QString::number(value));
    };
    for (int i = 0; i < 100; ++i)
        rewrite(i / 2 % 10);
    Status status{};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_TRUE(test::eventually([&] { return std::time(nullptr) > status.st_ctime + 2; })) << "so that it is kept";
    EXPECT_EQ(ini::load(name).value("k"), "9");
    EXPECT_EQ(ini::load(name).value("/k"), "9");
    rewrite(1);
    fs::remove(path);
    EXPECT_EQ(ini::load(name).value("k", 7), 7);
}

TEST_F(IniStore, RewrittenFilesStayTheirOwnersAndHaveATimeOfTheirOwn)
{
    test::writeFile(path, "k=1\n");
    const bool couldBeGivenAway = ::chown(path.c_str(), 1, 1) == 0; // as an administrator can
    const auto later = fs::file_time_type::clock::now() + std::chrono::hours(1); // as after a clock that was set back
    fs::last_write_time(path, later);
    EXPECT_TRUE(set("2"));
    EXPECT_GT(fs::last_write_time(path), later - std::chrono::milliseconds(1));
    Status status{};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid == 1, couldBeGivenAway);
    EXPECT_EQ(status.st_gid == 1, couldBeGivenAway);
    QSettings settings(name, QSettings::IniFormat);
    EXPECT_EQ(settings.value("k"), "2");
    EXPECT_TRUE(set("3"));
    settings.sync();
    EXPECT_EQ(settings.value("k"), "3") << "it tells by size and time that there is something new";
}

TEST_F(IniStore, WhatAKilledWriterLeftIsReplaced)
{
    const auto writeUntilKilled = [this] {
        ::ualarm(20'000, 0);
        for (char c = 'a'; set(QByteArray(1 << 20, c)); c ^= 1) { }
    };
    std::string left;
    while (left.empty()) { // until one was killed in the midst of its write
        ASSERT_EXIT(writeUntilKilled(), testing::KilledBySignal(SIGALRM), "");
        for (const auto &entry : fs::directory_iterator(dir.path()))
            left = entry.path() == path || entry.path() == path + ".lock" ? left : entry.path().string();
    }
    EXPECT_TRUE(set("1"));
    EXPECT_EQ(entries(), 1);
    fs::create_symlink(path, left);
    EXPECT_TRUE(set("2"));
    EXPECT_EQ(entries(), 1);
    fs::create_directory(left);
    EXPECT_FALSE(set("3"));
    EXPECT_EQ(test::readFile(path), "[General]\nk=2\n");
}

TEST_F(IniStore, LocksThatNobodyHoldsEnd)
{
    test::writeFile(path + ".lock", "1\nprogram\nelsewhere\n");
    EXPECT_TRUE(set("1"));
    EXPECT_FALSE(fs::exists(path + ".lock"));
    test::writeFile(dir / "mine", "kept");
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(dir / "mine", longAgo);
    fs::create_hard_link(dir / "mine", path + ".lock");
    EXPECT_FALSE(set("2"));
    EXPECT_EQ(test::readFile(dir / "mine"), "kept");
    fs::remove(path + ".lock");
    fs::create_directory(path + ".lock");
    EXPECT_FALSE(set("2"));
    fs::remove(path + ".lock");

    test::writeFile(path, std::string(1 << 20, '\n'));
    std::atomic<int> removed = 0;
    test::onThreads(2, [&](int thread) {
        while (removed < 3) {
            if (thread == 0)
                removed += fs::remove(path + ".lock") ? 1 : 0; // as a QSettings that was slow to
            else
                EXPECT_TRUE(set("1"));
        }
    });

    const ini::Turn turn(name); // of a process that is stopped, for all that others can tell
    fs::last_write_time(path + ".lock", longAgo);
    EXPECT_TRUE(turn.isOurs());
    EXPECT_FALSE(set("2"));
    EXPECT_EQ(ini::load(name).value("k"), "1");
}
