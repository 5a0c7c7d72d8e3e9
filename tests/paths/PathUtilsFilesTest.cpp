#include "paths/PathUtils.h"

#include "tests/support/FakePlatform.h"

#include <QBuffer>
#include <QDesktopServices>
#include <QDir>
#include <QRegularExpression>
#include <QUrl>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

/// Receives what would open in the user's session.
class OpenedUrls : public QObject
{
    Q_OBJECT
public:
    OpenedUrls() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~OpenedUrls() override { QDesktopServices::unsetUrlHandler("file"); }
    QList<QUrl> urls;
public slots:
    void open(const QUrl &url) { urls << url; }
};

class Folder : public test::TempDir
{
public:
    QString operator/(const QString &name) const { return QString::fromStdString(path()) + "/" + name; }
    QString make(const QString &name, const QByteArray &content = "") const
    {
        test::writeFile((*this / name).toStdString(), content.toStdString());
        return *this / name;
    }
};

/// A picture of one size that says to have another, in either byte order.
QByteArray bitmapSaying(int width, int height)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage(1, 1, QImage::Format_RGB32).save(&buffer, "BMP");
    for (int i = 0; i < 4; ++i) {
        bytes[18 + i] = static_cast<char>(width >> (8 * i));
        bytes[22 + i] = static_cast<char>(height >> (8 * i));
    }
    return bytes;
}

} // namespace

TEST(PathUtilsFiles, TakesNamesApart)
{
    struct Row
    {
        const char *path, *name, *suffix, *withoutSuffix;
    };
    const Row rows[] = {
        {"/a.b/file.tar.gz", "file.tar.gz", "gz", "file.tar"},
        {"C:\\docs\\file.tar.gz", "file.tar.gz", "gz", "file.tar"},
        {"/a\\b/c\\d.e", "c\\d.e", "e", "c\\d"},
        {"/x.y/README", "README", "README", "README"},
        {"plain", "plain", "plain", "plain"},
        {"/a/..", "..", "", "."},
        {"/a/.hidden", ".hidden", "hidden", ""},
        {"/a/b.c/", "", "", ""},
        {"", "", "", ""},
        {"/a/😀.ü😀", "😀.ü😀", "ü😀", "😀"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(PathUtils::PathToFileName(row.path), row.name) << row.path;
        EXPECT_EQ(PathUtils::getDirPathAlias(row.path), row.name) << row.path;
        EXPECT_EQ(PathUtils::PathToSuffix(row.path), row.suffix) << row.path;
        EXPECT_EQ(PathUtils::PathRemoveSuffix(row.path), row.withoutSuffix) << row.path;
    }
}

TEST(PathUtilsFiles, FindsFreeNames)
{
    const Folder dir;
    const QString path = dir / "re%2.po.pdf";
    EXPECT_EQ(PathUtils::GetPathNoConflit(path, 1, 1), path);
    dir.make("re%2.po.pdf");
    EXPECT_EQ(PathUtils::GetPathNoConflit(path, 1, 1), "");
    for (const char *next : {"re%2.po(1).pdf", "re%2.po(2).pdf"}) {
        EXPECT_EQ(PathUtils::GetPathNoConflit(path, 3, 5), dir / next);
        dir.make(next);
    }
    EXPECT_EQ(PathUtils::GetPathNoConflit(path, 3, 3), "");
    const QRegularExpression stamped(R"(/re%2\.po\(\d{4}(0[1-9]|1[0-2])\d{7}\)\.pdf$)");
    EXPECT_TRUE(stamped.match(PathUtils::GetPathNoConflit(path, 3, 5)).hasMatch());

    EXPECT_EQ(PathUtils::GetPathNoConflit(dir.make("notes"), 2, 2), dir / "notes(1).");
    const QString folder = QString::fromStdString(dir.path());
    EXPECT_EQ(PathUtils::GetDirectoryNoConflit(folder + "/", 2, 2), folder + "/(1)");
    EXPECT_EQ(PathUtils::GetDirectoryNoConflit(path, 2, 2), path) << "a file is no folder";
}

TEST(PathUtilsFiles, LooksAtPaths)
{
    const Folder dir;
    const QString file = dir.make("a/ü😀"), folder = dir / "a", fifo = dir / "fifo";
    ASSERT_EQ(::mkfifo(fifo.toUtf8().constData(), 0600), 0);
    EXPECT_TRUE(PathUtils::IsFilePathExist(file) && PathUtils::IsFilePathExist(fifo));
    EXPECT_FALSE(PathUtils::IsFilePathExist(folder) || PathUtils::IsFilePathExist("")
                 || PathUtils::IsFilePathExist(QString(256, 'x')));
    EXPECT_TRUE(PathUtils::isDirPathExist(folder + "/"));
    EXPECT_FALSE(PathUtils::isDirPathExist(file) || PathUtils::isDirPathExist(""));
    EXPECT_EQ(PathUtils::getFilePathDir(file), folder);
    EXPECT_EQ(PathUtils::getFilePathDir(folder), "");
    EXPECT_FALSE(PathUtils::isFileInUse(file));
    EXPECT_TRUE(PathUtils::isFileInUse(folder) && PathUtils::isFileInUse(dir / "new"));
    EXPECT_FALSE(QFileInfo::exists(dir / "new")) << "looking must not create anything";
    EXPECT_TRUE(PathUtils::isNetworkDiskPath("//server/share") && PathUtils::isNetworkDiskPath("ftp://host"));
    EXPECT_FALSE(PathUtils::isNetworkDiskPath("FTP://host") || PathUtils::isNetworkDiskPath("//"));
    EXPECT_TRUE(PathUtils::isDiskRootPath("C:\\\\") && PathUtils::isDiskRootPath("/"));
}

TEST(PathUtilsFiles, CopiesOneFile)
{
    const Folder dir;
    const QString from = dir.make("from", "new content");
    dir.make("same size", "old content");
    dir.make("full/kept");
    ASSERT_EQ(::mkfifo((dir / "fifo").toUtf8().constData(), 0600), 0);
    const std::string tooLong(256, 'x');
    struct Row
    {
        const char *name, *from, *to;
        int code;
        const char *left; // in the file at the destination
    };
    const Row rows[] = {
        {"onto itself", "from", "from", 1, "new content"},
        {"same size counts as same", "from", "same size", 1, "old content"},
        {"missing source", "none", "same size", 2, "old content"},
        {"folder as source", "full", "same size", 3, "old content"},
        {"nobody writes the FIFO", "fifo", "same size", 3, "old content"},
        {"onto a folder", "from", "full", 4, ""},
        {"into a missing folder", "from", "none/to", 5, ""},
        {"name too long", "from", tooLong.c_str(), 5, ""},
        {"to a new name", "from", "to", 1, "new content"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(PathUtils::copyFile(dir / row.from, dir / row.to), row.code) << row.name;
        const QString to = dir / row.to;
        EXPECT_EQ(QFileInfo(to).isDir() ? "" : test::readFile(to.toStdString()), row.left) << row.name;
    }
    dir.make("to", "shorter");
    EXPECT_EQ(PathUtils::copyFile(from, dir / "to"), 1);
    EXPECT_EQ(test::readFile((dir / "to").toStdString()), "new content");
}

TEST(PathUtilsFiles, CopyThatFindsNoRoomLeavesNothing)
{
    const Folder dir;
    const QString from = dir.make("from/file", QByteArray(100'000, 'x'));
    dir.make("to/file", "in the way");
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{4096, 4096};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_EQ(PathUtils::copyFile(from, dir / "to/file"), 5);
    EXPECT_TRUE(QDir(dir / "to").isEmpty());
}

TEST(PathUtilsFiles, CopiesTheFilesOfAFolder)
{
    const Folder dir;
    for (const char *name : {"from/a.txt", "from/.b.txt", "from/c.png", "from/sub.txt/d.txt", "to/x/a.txt"})
        dir.make(name, name);
    EXPECT_FALSE(PathUtils::copyFilterFileInDir(dir / "none", dir / "made", {"*"}));
    EXPECT_FALSE(QFileInfo::exists(dir / "made"));
    EXPECT_TRUE(PathUtils::copyFilterFileInDir(dir / "from", dir / "to/x", {"*.txt"}));
    EXPECT_EQ(QDir(dir / "to/x").entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              (QStringList{".b.txt", "a.txt"}));
    EXPECT_EQ(test::readFile((dir / "to/x/a.txt").toStdString()), "to/x/a.txt") << "existing files stay";
    EXPECT_TRUE(PathUtils::copyFilterFileInDir(dir / "from", dir / "made/deep", {}));
    EXPECT_TRUE(QFileInfo::exists(dir / "made/deep/c.png"));
}

TEST(PathUtilsFiles, DeletesNoMoreThanItSays)
{
    const Folder dir;
    dir.make("kept/file");
    dir.make("gone/sub/file");
    fs::create_directory_symlink(dir.path() / "kept", dir.path() / "gone/link");
    fs::create_directory_symlink(dir.path() / "kept", dir.path() / "link");
    EXPECT_FALSE(PathUtils::deleteFile(dir / "kept") || PathUtils::deleteFile(dir / "none"));
    EXPECT_FALSE(PathUtils::deleteDirectory(dir / "kept/file") || PathUtils::deleteDirectory(""));
    EXPECT_TRUE(PathUtils::deleteDirectory(dir / "link/") && PathUtils::deleteDirectory(dir / "gone"));
    EXPECT_EQ(QDir(QString::fromStdString(dir.path())).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"kept"});
    EXPECT_TRUE(PathUtils::deleteFile(dir / "kept/file"));
}

TEST(PathUtilsFiles, OpensFilesAndFolders)
{
    const Folder dir;
    const OpenedUrls opened;
    const QString file = dir.make("50% #1?.pdf"), folder = QString::fromStdString(dir.path());
    EXPECT_FALSE(PathUtils::openFileEx(dir / "none"));
    EXPECT_TRUE(PathUtils::openFileEx(file) && PathUtils::OpenDirectory(file) && PathUtils::OpenDirectory(folder));
    EXPECT_EQ(opened.urls, (QList<QUrl>{QUrl::fromLocalFile(file), QUrl::fromLocalFile(folder)}));
    EXPECT_EQ(test::fakePlatform().revealedFiles, std::vector<QString>{file});
}

TEST(PathUtilsFiles, LimitsPicturesWithoutDecodingThem)
{
    const Folder dir;
    const QByteArray full = bitmapSaying(10000, 10000).leftJustified(20971520, '\0');
    struct Row
    {
        const char *name;
        QByteArray content;
        const char *error;
    };
    const Row rows[] = {
        {"both limits", full, ""},
        {"a byte more", full + '\0', "Cannot insert pictures larger than 20M"},
        {"wider", bitmapSaying(10001, 1), "Cannot insert pictures with a resolution greater than 10000"},
        {"higher", bitmapSaying(1, 10001), "Cannot insert pictures with a resolution greater than 10000"},
        {"no picture", "PNG? No.", ""},
    };
    for (const Row &row : rows) {
        QString error;
        EXPECT_EQ(PathUtils::isPicReadable(dir.make("picture.bmp", row.content), error), *row.error == '\0')
            << row.name;
        EXPECT_EQ(error, row.error) << row.name;
    }
    QString error = "left alone";
    ASSERT_EQ(::mkfifo((dir / "fifo.png").toUtf8().constData(), 0600), 0);
    EXPECT_TRUE(PathUtils::isPicReadable(dir / "fifo.png", error));
    EXPECT_EQ(error, "left alone");
    EXPECT_TRUE(PathUtils::ReadImageInMaxSize(dir / "fifo.png", 9, 9).isNull());
    EXPECT_TRUE(PathUtils::ReadImageInMaxSize(dir.make("text.png", "PNG? No."), 9, 9).isNull());
}

TEST(PathUtilsFiles, ScalesPicturesDownAsTheyAreShown)
{
    const Folder dir;
    const auto size = [](const QString &path, int width, int height) {
        return PathUtils::ReadImageInMaxSize(path, width, height).size();
    };
    const QString path = dir / "picture.jpg";
    ASSERT_TRUE(QImage(101, 50, QImage::Format_RGB32).save(path));
    EXPECT_EQ(size(path, 101, 50), QSize(101, 50));
    EXPECT_EQ(size(path, 50, 50), QSize(50, 24)) << "truncated";
    EXPECT_EQ(size(path, 101, 25), QSize(50, 25));
    EXPECT_EQ(size(path, 0, -1), QSize(1, 1));

    // Orientation 6: to be turned by a quarter.
    QByteArray turned = QByteArray::fromStdString(test::readFile(path.toStdString()));
    turned.insert(2,
                  QByteArray::fromHex("ffe1002245786966000049492a00080000000100120103000100000006000000"
                                      "00000000"));
    EXPECT_EQ(size(dir.make("turned.jpg", turned), 50, 50), QSize(24, 50));
    EXPECT_EQ(size(dir / "turned.jpg", 50, 101), QSize(50, 101));
}

#include "PathUtilsFilesTest.moc"
