#include "paths/PathUtils.h"

#include "paths/PathRecorder.h"
#include "tests/support/FakePlatform.h"

#include <QApplication>
#include <QDateTime>
#include <QLineEdit>
#include <QTimer>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

struct PathUtilsTest : testing::Test
{
    PathUtilsTest()
    {
        qputenv("TMPDIR", bundle.path().c_str());
        test::fakePlatform().homeDirectoryOfUser = bundle / "home";
    }

    [[nodiscard]] QString at(const QString &name) const { return QString::fromStdString(bundle / name.toStdString()); }
    QString make(const QString &name, const QByteArray &content = "") const
    {
        test::writeFile(bundle / name.toStdString(), content.toStdString());
        return at(name);
    }

    test::FakeBundle bundle;
};

TEST_F(PathUtilsTest, OnlySomeGettersCreateTheirFolder)
{
    EXPECT_EQ(PathUtils::getAppConfigPath(false) + PathUtils::getPreloadImgTempPath(),
              at("support/Foo/config.ini") + at("preloadFlipImg/"));
    EXPECT_NE(PathUtils::writableLocation(QStandardPaths::DocumentsLocation), at("home/Documents"));
    EXPECT_EQ(PathUtils::pathOutsideSandbox(QStandardPaths::DocumentsLocation), at("home/Documents"));
    EXPECT_EQ(QDir(at("")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("Foo.app"));

    EXPECT_EQ(PathUtils::getWatermarkDir(), at("support/Foo/watermark/"));
    EXPECT_FALSE(PathUtils::isSwithToStandard());
    EXPECT_TRUE(fs::is_empty(bundle / "support/Foo"));
    for (const auto getter : {PathUtils::getSignatureDir, PathUtils::getSealDir, PathUtils::getRecommendPdfDir,
                              PathUtils::getSaveChatDocContentFileDir, PathUtils::getThumbnailDir}) {
        const QString path = getter();
        EXPECT_TRUE(path.endsWith('/')) << path.toStdString();
        EXPECT_TRUE(fs::equivalent(path.toStdString() + "..", bundle / "support/Foo")) << path.toStdString();
    }
    EXPECT_TRUE(QFile::exists(PathUtils::GetEditImageBackupDir()));
}

TEST_F(PathUtilsTest, SandboxSharesTheContainerAndMapsTheUsersFolders)
{
    bundle.writeGlobalFile("[common]\nenable_sbx=1\ngroup_name=g\n");
    test::fakePlatform().groupContainers["g"] = bundle / "group";
    EXPECT_EQ(PathUtils::getThumbnailDir(), at("group/thumbpics/"));
    make("Foo.app/Contents/Resources/data/help.pdf", "help");
    EXPECT_EQ(PathUtils::copyWelcomeFileWithUpdateToWelcomeFile(), 1);
    EXPECT_EQ(PathUtils::getWelcomeFilePath(), at("group/pdfreader/Welcome_zh.pdf"));
    EXPECT_EQ(test::readFile(bundle / "group/pdfreader/Welcome_zh.pdf"), "help");
    EXPECT_EQ(PathUtils::standardLocations(QStandardPaths::DownloadLocation), QStringList(at("home/Downloads")));
    PathRecorder recorder;
    EXPECT_EQ(PathUtils::getExportDir(nullptr) + PathUtils::getExportDir(&recorder), at("home/Documents"));

    test::fakePlatform().panelAnswer = {bundle / "home"};
    for (const char *granted : {"group", "home/"})
        EXPECT_TRUE(PathUtils::checkDirPermission(at(granted))) << granted;
    for (const QString &refused : {at("else"), QString()})
        EXPECT_FALSE(PathUtils::checkDirPermission(refused)) << refused.toStdString();
}

TEST_F(PathUtilsTest, CachesAreKeyedByTheSpellingOfAPath)
{
    const QString document = make("docs/ü.pdf"), thumbnail = PathUtils::getThumbnailPath(document);
    EXPECT_NE(PathUtils::getThumbnailPath(at("docs/../docs/ü.pdf")), thumbnail);
    EXPECT_FALSE(PathUtils::isThumbnailExistAndValid(document));
    EXPECT_EQ(PathUtils::getRenderCacheImagePath(document, 3, 1), PathUtils::getRenderCacheDir(document) + "3");
    test::writeFile(thumbnail.toStdString(), "");
    for (const int age : {-5, 0, 5}) {
        fs::last_write_time(document.toStdString(),
                            fs::last_write_time(thumbnail.toStdString()) + std::chrono::milliseconds(age));
        EXPECT_EQ(PathUtils::isThumbnailExistAndValid(document), age <= 0) << age;
    }
    const QString content = PathUtils::getContentFileFullPath(make(QString(29, 'x') + "😀.tar.pdf"));
    EXPECT_EQ(PathUtils::PathToFileName(content).indexOf('_'), 29) << "half a character would name another file";
}

TEST_F(PathUtilsTest, TakesNamesApartAndFindsFreeOnes)
{
    EXPECT_EQ(PathUtils::PathToSuffix("C:\\docs\\file.tar.gz"), "gz");
    EXPECT_EQ(PathUtils::PathToSuffix("/A") + PathUtils::PathRemoveSuffix("/x.y/B"), "AB");
    for (const char *path : {"//", "FTP://host", "a//b"})
        EXPECT_FALSE(PathUtils::isNetworkDiskPath(path)) << path;
    for (const char *path : {"//server/share", "ftp://host"})
        EXPECT_TRUE(PathUtils::isNetworkDiskPath(path)) << path;

    const QString path = at("re%2.po.pdf");
    for (const char *next : {"re%2.po.pdf", "re%2.po(1).pdf", "re%2.po(2).pdf"}) {
        EXPECT_EQ(PathUtils::GetPathNoConflit(path, 3, 5), at(next));
        EXPECT_TRUE(PathUtils::isFileInUse(at(next))) << "cannot be opened, and is not created";
        make(next);
    }
    EXPECT_EQ(PathUtils::GetPathNoConflit(path, 3, 3), "");
    // Six or seven in the evening, wherever this runs: hours are counted to twelve.
    qputenv("TZ", "TST" + QByteArray::number(QDateTime::currentDateTimeUtc().time().hour() - 18));
    const QString stamped = PathUtils::GetPathNoConflit(path, 3, 5);
    EXPECT_EQ(stamped.size(), path.size() + 15) << stamped.toStdString();
    EXPECT_EQ(stamped.mid(path.size() + 1, 1), "0") << stamped.toStdString();
    EXPECT_EQ(PathUtils::GetPathNoConflit(make("notes"), 2, 2), at("notes(1)."));
    EXPECT_EQ(PathUtils::GetDirectoryNoConflit(at("Foo.app/"), 2, 2), at("Foo.app/(1)"));
}

TEST_F(PathUtilsTest, CopiesOneFile)
{
    for (const char *name : {"from", "size", "other size"})
        make(name, name);
    ::mkfifo((bundle / "fifo").c_str(), 0600);
    const std::tuple<const char *, const char *, int, const char *> rows[] = {
        {"from", "from", 1, "from"}, // onto itself
        {"from", "size", 1, "size"}, // the same size counts as the same
        {"none", "size", 2, "size"}, {"fifo", "size", 3, "size"},
        {"from", "none/to", 5, ""},  {"from", "other size", 1, "from"},
    };
    for (const auto &[from, to, code, left] : rows) {
        EXPECT_EQ(PathUtils::copyFile(at(from), at(to)), code) << from << ' ' << to;
        EXPECT_EQ(test::readFile(bundle / to), left) << from << ' ' << to;
    }
    EXPECT_EQ(PathUtils::copyFile(at("from"), at("Foo.app")), 4);
    const QString broken = at("from") + QChar::Null;
    EXPECT_EQ(PathUtils::copyFile(broken, broken + "x"), 2) << "a NUL ends no path";
    EXPECT_EQ(PathUtils::copyFile(at("from"), at("to") + QChar::Null), 5);
    EXPECT_TRUE(PathUtils::isFileInUse(broken));
    EXPECT_FALSE(PathUtils::deleteDirectory(at("") + QChar::Null));
}

TEST_F(PathUtilsTest, FoldersLoseNoMoreThanTheyAreTold)
{
    for (const char *name : {"from/a.txt", "from/.b.txt", "from/c.png", "to/x/a.txt"})
        make(name, name);
    ::mkfifo((bundle / "fifo").c_str(), 0600);
    fs::create_symlink("../fifo", bundle / "from/fifo.txt");
    EXPECT_TRUE(PathUtils::copyFilterFileInDir(at("from"), at("to/x"), {"*.txt"}));
    EXPECT_EQ(QDir(at("to/x")).entryList(QDir::Files | QDir::Hidden), QStringList({".b.txt", "a.txt"}));
    EXPECT_EQ(test::readFile(bundle / "to/x/a.txt"), "to/x/a.txt");
    EXPECT_FALSE(PathUtils::copyFilterFileInDir(at("from"), "", {"*.txt"}));
    EXPECT_FALSE(PathUtils::copyFilterFileInDir(at("none"), at("made"), {}));
    EXPECT_FALSE(QFile::exists("a.txt"));
    EXPECT_FALSE(QFile::exists(at("made")));

    for (const char *link : {"link", "link2", "to/link"})
        fs::create_directory_symlink(bundle / "from", bundle / link);
    EXPECT_FALSE(PathUtils::deleteDirectory(""));
    for (const char *gone : {"link/", "link2/.", "to/."}) {
        EXPECT_TRUE(PathUtils::deleteDirectory(at(gone))) << gone;
        EXPECT_FALSE(fs::exists(fs::symlink_status(fs::path(bundle / gone).parent_path()))) << gone;
    }
    EXPECT_FALSE(PathUtils::deleteFile(at("from")));
    EXPECT_TRUE(PathUtils::deleteFile(at("from/a.txt"))) << "what links led to stayed";
    EXPECT_FALSE(PathUtils::deleteFile(at("from/a.txt"))) << "it is gone";
}

TEST_F(PathUtilsTest, LimitsPicturesAsTheyAreShown)
{
    const std::string file = bundle / "a.png"; // which does not decide what it is
    QString error;
    QImage(10000, 1, QImage::Format_Mono).save(at("a.png"), "bmp");
    fs::resize_file(file, 20971520);
    EXPECT_TRUE(PathUtils::isPicReadable(at("a.png"), error));
    fs::resize_file(file, 20971521);
    EXPECT_FALSE(PathUtils::isPicReadable(at("a.png"), error));
    EXPECT_EQ(error, "Cannot insert pictures larger than 20M");
    QImage(1, 10001, QImage::Format_Mono).save(at("a.png"), "bmp");
    EXPECT_FALSE(PathUtils::isPicReadable(at("a.png"), error));
    EXPECT_EQ(error, "Cannot insert pictures with a resolution greater than 10000");
    EXPECT_TRUE(PathUtils::isPicReadable(make("a.svg", "<svg width='10001' height='1'/>"), error)) << "not unpacked";

    const QString path = at("picture.jpg");
    ASSERT_TRUE(QImage(101, 50, QImage::Format_RGB32).save(path));
    QByteArray turned = QByteArray::fromStdString(test::readFile(path.toStdString()));
    turned.insert(2, QByteArray::fromHex("ffe1002245786966000049492a0008000000010012010300010000000600000000000000"));
    EXPECT_EQ(PathUtils::ReadImageInMaxSize(make("picture.jpg", turned), 50, 50).size(), QSize(24, 50));
    EXPECT_EQ(PathUtils::ReadImageInMaxSize(path, 0, -1).size(), QSize(1, 1));
    EXPECT_EQ(PathUtils::ReadImageInMaxSize(path, 0, 101).size(), QSize(1, 2)) << "0 is taken for 1";
}

TEST_F(PathUtilsTest, DialogsRememberTheirFolders)
{
    int argc = 0;
    const QApplication application(argc, nullptr);
    const QString start = at("Foo.app"), chosen = make("other/a");
    const auto drawn = QFileDialog::DontUseNativeDialog;
    PathRecorder &recorder = *PathRecorder::GetInstance();
    QString choice, shown; // nothing chosen is cancelled
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (auto *open = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            shown = open->directory().path();
            open->findChild<QLineEdit *>()->setText(choice);
            static_cast<QDialog *>(open)->done(choice.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
        }
    });
    user.start(1);
    for (const int type : {1, 1, 2, 2, 3, 3, 4, 4, 9}) {
        const auto ask = type == 3 ? PathUtils::getSaveFileName : PathUtils::getOpenFileName;
        EXPECT_EQ(ask(PathUtils::PathType(type), start, &recorder, nullptr, "", "", "", nullptr, drawn), choice);
        EXPECT_EQ(shown, type == 9 ? at("other") : start) << "cancelling remembers nothing, and 9 is documents, too";
        choice = choice.isEmpty() ? chosen : "";
    }
    EXPECT_EQ(PathUtils::getExportDir(&recorder), at("other")) << "shares the folder of texts";
    PathUtils::setExportDir(start, &recorder);
    EXPECT_EQ(PathUtils::getExportDir(&recorder), start);
}
