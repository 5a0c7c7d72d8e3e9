#include "paths/PathUtils.h"

#include "paths/MacSandbox.h"
#include "paths/PathRecorder.h"
#include "paths/platform/FileManager_p.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QObject>
#include <QStorageInfo>
#include <QUrl>
#include <algorithm>
#include <filesystem>
#include <iterator>

namespace fs = std::filesystem;

namespace {

constexpr qint64 kMaxPictureBytes = 20971520;
constexpr int kMaxPictureSide = 10000;

constexpr char kSingleTypes[] = "\n PDF(*.pdf)\n OFD(*.ofd)\n PNG(*.png)\n JPG(*.jpg)\n JPEG(*.jpeg)\n BMP(*.bmp)"
                                "\n TIF(*.tif)\n TIFF(*.tiff)\n GIF(*.gif)";

/// What dialogs of one type offer, and the folder that they share.
struct DialogKind
{
    const char *filter;
    const char *moreEntries;
    QString PathRecorder::*folder;
};

constexpr DialogKind kOtherKind = {"", "", &PathRecorder::m_documentDir};

// By PathType, from 1.
// clang-format off
constexpr DialogKind kDialogKinds[] = {
    {"All file(*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.gif)", "", &PathRecorder::m_imageDir},
    {"PDF(*.pdf)", "", &PathRecorder::m_documentDir},
    {"All file(*.pdf *.ofd *.png *.jpg *.jpeg *.bmp *.tif *.tiff *.gif)", kSingleTypes, &PathRecorder::m_mixedDir},
    {"TXT(*.txt)", "", &PathRecorder::m_textDir},
    {"All file(*.docx *.doc *.xlsx *.xls *.pptx *.ppt *.txt)", "", &PathRecorder::m_documentDir},
    {"All file(*)", "", &PathRecorder::m_documentDir},
    {"All file(*.xlsx *.xls) ", "", &PathRecorder::m_documentDir},
    {"All(*.pdf *.ofd *.png *.jpg *.jpeg *.bmp *.tif *.tiff *.gif)", kSingleTypes, &PathRecorder::m_documentDir},
};
// clang-format on

const DialogKind &kindOf(PathUtils::PathType type)
{
    return type >= 1 && type <= static_cast<int>(std::size(kDialogKinds)) ? kDialogKinds[type - 1] : kOtherKind;
}

QString orDocuments(const QString &dir)
{
    return dir.isEmpty() ? PathUtils::writableLocation(QStandardPaths::DocumentsLocation) : dir;
}

/// One run of a dialog: where it starts, what it offers, what is remembered of it.
class DialogRun
{
public:
    DialogRun(PathUtils::PathType type, PathRecorder &recorder, const QString &defaultDir, const QString &filter)
        : m_folder(recorder.*kindOf(type).folder), m_filter(filter.isEmpty() ? PathUtils::getFilter(type) : filter)
    {
        if (m_folder.isEmpty())
            m_folder = defaultDir;
    }

    [[nodiscard]] const QString &filter() const { return m_filter; }
    [[nodiscard]] QString start(const QString &fileName) const { return m_folder + QLatin1Char('/') + fileName; }
    void remember(const QString &chosen)
    {
        if (!chosen.isEmpty())
            m_folder = chosen.left(chosen.lastIndexOf(QLatin1Char('/')));
    }

private:
    QString &m_folder;
    QString m_filter;
};

QString timeStamp()
{
    const QDateTime now = QDateTime::currentDateTime();
    // Hours to twelve, which QDateTime counts only beside "AP".
    return now.toString(QStringLiteral("MMdd")) + now.toString(QStringLiteral("hhAP")).left(2)
        + now.toString(QStringLiteral("mmsszzz"));
}

template <typename Exists, typename NameWith>
QString firstFree(QString candidate, int numberedLimit, int giveUpLimit, Exists exists, NameWith nameWith)
{
    for (int n = 1; exists(candidate); ++n) {
        if (n < numberedLimit)
            candidate = nameWith(QString::number(n));
        else if (n < giveUpLimit)
            candidate = nameWith(timeStamp());
        else
            return {};
    }
    return candidate;
}

/// A NUL ends a path for the system: what follows would be passed over.
bool hasNul(const QString &path)
{
    return path.contains(QChar::Null);
}

/// Whether two paths lead to one file, through links too.
bool areOneFile(const QString &a, const QString &b)
{
    std::error_code error;
    return fs::equivalent(a.toStdString(), b.toStdString(), error);
}

/// The folder's own path: what ends in "/" or "/." leads through a link instead of naming it.
std::string withoutEnd(std::string path)
{
    const auto endsIn = [&path](const std::string &end) {
        return path.size() > end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0;
    };
    while (endsIn("/") || endsIn("/."))
        path.pop_back();
    return path;
}

/// What opening may wait for a writer is never opened.
bool isRegularFile(const QString &path)
{
    return QFileInfo(path).isFile();
}

bool canBeRead(const QString &path)
{
    return isRegularFile(path) && QFile(path).open(QIODevice::ReadOnly);
}

/// Whether the file holds a picture of the formats that can be inserted. Others may have to be unpacked to tell a size.
bool isSupportedPicture(const QString &path)
{
    return isRegularFile(path)
        && PathUtils::getSupportPicSuffix().contains(QString::fromLatin1(QImageReader::imageFormat(path)));
}

bool isTurned(const QImageReader &reader)
{
    return (reader.transformation() & QImageIOHandler::TransformationRotate90) != 0;
}

/// The size of the picture as it is shown; no valid size for what is no picture.
QSize shownSize(const QImageReader &reader)
{
    const QSize stored = reader.size();
    return isTurned(reader) ? stored.transposed() : stored;
}

QSize scaledDown(const QSize &size, const QSize &limit)
{
    const double ratio = std::max(static_cast<double>(size.width()) / std::max(limit.width(), 1),
                                  static_cast<double>(size.height()) / std::max(limit.height(), 1));
    if (ratio <= 1)
        return size;
    return {std::max(static_cast<int>(size.width() / ratio), 1), std::max(static_cast<int>(size.height() / ratio), 1)};
}

} // namespace

QString PathUtils::GetPathNoConflit(const QString &filePath, int numberedLimit, int giveUpLimit)
{
    const QFileInfo parts(filePath);
    return firstFree(
        filePath, numberedLimit, giveUpLimit, [](const QString &path) { return QFileInfo::exists(path); },
        [&parts](const QString &addition) {
            return QDir(parts.path())
                .filePath(QStringLiteral("%1(%2).%3").arg(parts.completeBaseName(), addition, parts.suffix()));
        });
}

QString PathUtils::GetDirectoryNoConflit(const QString &dirPath, int numberedLimit, int giveUpLimit)
{
    return firstFree(dirPath, numberedLimit, giveUpLimit, isDirPathExist,
                     [&dirPath](const QString &addition) { return QStringLiteral("%1(%2)").arg(dirPath, addition); });
}

QString PathUtils::PathToFileName(const QString &path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return path.mid((slash >= 0 ? slash : path.lastIndexOf(QLatin1Char('\\'))) + 1);
}

QString PathUtils::PathToSuffix(const QString &path)
{
    const QString name = PathToFileName(path);
    return name.mid(name.lastIndexOf(QLatin1Char('.')) + 1);
}

QString PathUtils::PathRemoveSuffix(const QString &path)
{
    const QString name = PathToFileName(path);
    return name.left(name.lastIndexOf(QLatin1Char('.')));
}

QString PathUtils::getDirPathAlias(const QString &path)
{
    return QString::fromStdWString(PathToFileName(path).toStdWString());
}

bool PathUtils::IsFilePathExist(const QString &path)
{
    if (hasNul(path))
        return false;
    std::error_code error;
    const fs::file_status status = fs::status(path.toStdString(), error);
    return fs::exists(status) && !fs::is_directory(status);
}

bool PathUtils::isDirPathExist(const QString &path)
{
    return !path.isEmpty() && QDir(path).exists();
}

QString PathUtils::getFilePathDir(const QString &path)
{
    return IsFilePathExist(path) ? QFileInfo(path).absolutePath() : QString();
}

void PathUtils::GetPathWithCaseSensitive(QString &path)
{
    path = QFileInfo(path).absoluteFilePath();
}

bool PathUtils::checkFileSameBySize(const QString &a, const QString &b)
{
    return IsFilePathExist(a) && IsFilePathExist(b) && QFileInfo(a).size() == QFileInfo(b).size();
}

bool PathUtils::isFileInUse(const QString &path)
{
    return hasNul(path) || !QFile(path).open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

bool PathUtils::isNetworkDiskPath(const QString &path)
{
    return path.size() >= 3 && (path.startsWith(QLatin1String("//")) || path.startsWith(QLatin1String("ftp://")));
}

bool PathUtils::isDiskRootPath(const QString &path)
{
    const QString unified = QString(path).replace(QLatin1String("\\\\"), QLatin1String("/"));
    if (unified.count(QLatin1Char('/')) == 1 && unified.endsWith(QLatin1Char('/')))
        return true;
    return !QStorageInfo(path).device().startsWith("/dev/disk");
}

bool PathUtils::checkDirPermission(const QString &dir)
{
    if (dir.isEmpty())
        return false;
    return !MacSandbox::isSandBox() || QDir(dir).isReadable() || MacSandbox::requestPermission(dir.toStdString(), {});
}

bool PathUtils::deleteFile(const QString &path)
{
    return IsFilePathExist(path) && QFile::remove(path);
}

bool PathUtils::deleteDirectory(const QString &path)
{
    if (hasNul(path) || !isDirPathExist(path))
        return false;
    std::error_code error;
    fs::path folder = withoutEnd(path.toStdString());
    if (!fs::is_symlink(folder, error)) // of a link, only itself goes
        folder = fs::canonical(folder, error);
    return !error && folder != folder.root_path() && fs::remove_all(folder, error) > 0 && !error;
}

int PathUtils::copyFile(const QString &from, const QString &to)
{
    if (checkFileSameBySize(from, to) || (IsFilePathExist(from) && areOneFile(from, to)))
        return Copied;
    if (hasNul(from) || !QFileInfo::exists(from))
        return NoSource;
    if (hasNul(to))
        return CopyFailed;
    if (!canBeRead(from))
        return UnreadableSource;
    if (QFileInfo::exists(to) && !QFile::remove(to))
        return DestinationStays;
    return QFile::copy(from, to) ? Copied : CopyFailed;
}

bool PathUtils::copyFilterFileInDir(const QString &fromDir, const QString &toDir, const QStringList &nameFilters)
{
    if (!isDirPathExist(fromDir) || toDir.isEmpty()) // an empty name would mean wherever the process stands
        return false;
    const QDir target(toDir);
    target.mkpath(QStringLiteral("."));
    for (const QFileInfo &file : QDir(fromDir).entryInfoList(nameFilters, QDir::Files | QDir::Hidden)) {
        if (file.isFile()) // links to FIFOs are listed, too
            QFile::copy(file.filePath(), target.filePath(file.fileName()));
    }
    return true;
}

bool PathUtils::openFile(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool PathUtils::openFileEx(const QString &path)
{
    return QFileInfo::exists(path) && openFile(path);
}

bool PathUtils::OpenDirectory(const QString &path)
{
    return IsFilePathExist(path) ? openFolderAndSelectFile(path) : openFile(path);
}

bool PathUtils::openFolderAndSelectFile(const QString &path)
{
    return platform::revealFile(path);
}

QStringList PathUtils::getSupportPicSuffix()
{
    return {"png", "jpg", "jpeg", "bmp", "tif", "tiff", "gif"};
}

bool PathUtils::isPicReadable(QString path, QString &error)
{
    if (QFileInfo(path).size() > kMaxPictureBytes) {
        error = QObject::tr("Cannot insert pictures larger than 20M");
        return false;
    }
    const QSize size = isSupportedPicture(path) ? shownSize(QImageReader(path)) : QSize();
    if (std::max(size.width(), size.height()) > kMaxPictureSide) {
        error = QObject::tr("Cannot insert pictures with a resolution greater than 10000");
        return false;
    }
    return true;
}

QImage PathUtils::ReadImageInMaxSize(QString path, int maxWidth, int maxHeight)
{
    if (!isRegularFile(path))
        return {};
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = shownSize(reader);
    const QSize scaled = scaledDown(size, {maxWidth, maxHeight});
    if (scaled != size)
        reader.setScaledSize(isTurned(reader) ? scaled.transposed() : scaled); // scaling comes before turning
    return reader.read();
}

QString PathUtils::getFilter(PathType type)
{
    const DialogKind &kind = kindOf(type);
    return QLatin1String(kind.filter) + QLatin1String(kind.moreEntries);
}

void PathUtils::getOperatePath(PathType type, QString **slot, PathRecorder *recorder)
{
    if (slot && recorder)
        *slot = &(recorder->*kindOf(type).folder);
}

QString PathUtils::getOpenFileName(PathType type, const QString &defaultDir, PathRecorder *recorder, QWidget *parent,
                                   const QString &caption, const QString &fileName, const QString &filter,
                                   QString *selectedFilter, QFileDialog::Options options)
{
    if (!recorder)
        return {};
    DialogRun run(type, *recorder, orDocuments(defaultDir), filter);
    QString chosen =
        QFileDialog::getOpenFileName(parent, caption, run.start(fileName), run.filter(), selectedFilter, options);
    run.remember(chosen);
    return chosen;
}

QStringList PathUtils::getOpenFileNames(PathType type, const QString &defaultDir, QWidget *parent,
                                        const QString &caption, const QString &fileName, const QString &filter,
                                        QString *selectedFilter, QFileDialog::Options options)
{
    DialogRun run(type, *PathRecorder::GetInstance(), orDocuments(defaultDir), filter);
    QStringList chosen =
        QFileDialog::getOpenFileNames(parent, caption, run.start(fileName), run.filter(), selectedFilter, options);
    run.remember(chosen.value(0));
    return chosen;
}

QString PathUtils::getSaveFileName(PathType type, const QString &defaultDir, PathRecorder *recorder, QWidget *parent,
                                   const QString &caption, const QString &fileName, const QString &filter,
                                   QString *selectedFilter, QFileDialog::Options options)
{
    if (!recorder)
        return {};
    DialogRun run(type, *recorder, defaultDir, filter);
    QString chosen =
        QFileDialog::getSaveFileName(parent, caption, run.start(fileName), run.filter(), selectedFilter, options);
    run.remember(chosen);
    return chosen;
}
