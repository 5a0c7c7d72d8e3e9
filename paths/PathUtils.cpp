#include "paths/PathUtils.h"

#include "config/Locations_p.h"
#include "config/MacGlobalConfig.h"
#include "config/ProductCfgUtil.h"
#include "config/ini/IniStore_p.h"
#include "paths/DialogRun_p.h"
#include "paths/MacPath.h"
#include "paths/MacSandbox.h"
#include "paths/PathRecorder.h"
#include "paths/platform/FileManager_p.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QObject>
#include <QStorageInfo>
#include <QUrl>
#include <algorithm>
#include <filesystem>
#include <identity.h>

namespace fs = std::filesystem;

using locations::created;
using locations::inApplication;
using locations::inUserData;

namespace {

constexpr char RECOMMEND_PDF_DIRECTORY[] = "pdf/";
constexpr masked::View HARBO_EDITION_DIR_NAME = product::kHarboDataDirName;

constexpr int kContentNameLength = 30;
constexpr qint64 kMaxPictureBytes = 20971520;
constexpr int kMaxPictureSide = 10000;

QString inAppDir(const std::string &name)
{
    return locations::applicationDir() + QString::fromStdString(name);
}

QString inTempDir(const QString &folder)
{
    return PathUtils::getTempDir() + folder + QDir::separator();
}

QString inSharedContainer(const char *name)
{
    return QString::fromStdString(MacSandbox::getSharedPath(std::string()) + name);
}

QString md5(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex());
}

QString cachedPicture(const QString &filePath)
{
    if (!PathUtils::IsFilePathExist(filePath) || !PathUtils::isDirPathExist(PathUtils::getThumbnailDir()))
        return {};
    return PathUtils::getThumbnailPath(filePath);
}

std::string welcomeFileName()
{
    if (SingleTon<ProductCfgUtil>::GetInstance()->isTolvaProduct())
        return product::kWelcomeFileTolva.str();
    return MacGlobalConfig::isInternationalApp() ? "Welcome.pdf" : product::kWelcomeFile.str();
}

using SandboxMap = QHash<QStandardPaths::StandardLocation, QString>;

const SandboxMap &sandboxMap()
{
    static const SandboxMap &map = *[] {
        const QString home = QString::fromStdString(MacSandbox::getHomePath());
        return new SandboxMap{
            {QStandardPaths::DesktopLocation, home + QLatin1String("/Desktop")},
            {QStandardPaths::DownloadLocation, home + QLatin1String("/Downloads")},
            {QStandardPaths::DocumentsLocation, home + QLatin1String("/Documents")},
        };
    }();
    return map;
}

/// Empty when the system's own answer holds.
QString mapped(QStandardPaths::StandardLocation location)
{
    return MacSandbox::isSandBox() ? PathUtils::pathOutsideSandbox(location) : QString();
}

QString orDocuments(const QString &dir)
{
    return dir.isEmpty() ? PathUtils::writableLocation(QStandardPaths::DocumentsLocation) : dir;
}

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

QString PathUtils::getAppDataDir(bool create)
{
    return locations::userDataDir(create);
}

QString PathUtils::getAppDataDirName()
{

    const ProductCfgUtil *config = SingleTon<ProductCfgUtil>::GetInstance();
    switch (config->getProductEdition()) {
    case PDFEdition::Harbo:
        return QString::fromStdString(HARBO_EDITION_DIR_NAME.str());
    case PDFEdition::Wrenfix:
        return QString::fromStdString(product::kWrenfixDataDirName.str());
    default:
        return config->getCacheDirName();
    }
}

QString PathUtils::getTempDir()
{
    const QString folder = QStandardPaths::standardLocations(QStandardPaths::TempLocation).value(0);
    return folder.isEmpty() ? folder : folder + QDir::separator();
}

// One line per getter, so that names can be read side by side, and whether their folder is created.
// clang-format off

QString PathUtils::getSignImageSavePath() { return inUserData("signImgPath"); }
QString PathUtils::getHighLightFastColorFilePath() { return inUserData("highLightFastRecentColor.txt"); }
QString PathUtils::getUnderlineFastColorFilePath() { return inUserData("underlineFastRecentColor.txt"); }
QString PathUtils::getUrlsTrustedConfigPath() { return inUserData("urlsTrustedTable.txt"); }
QString PathUtils::GetAttachmentTrustConfigPath() { return inUserData("attachmentTrustedTable.txt"); }
QString PathUtils::getScreenshotFolderPath() { return inUserData("screenshotimg/"); }
QString PathUtils::getAppConfigPath(bool create) { return locations::appConfig(create); }
QString PathUtils::getAppHotKeyPath() { return inUserData("hotkey.ini"); }
QString PathUtils::getAnnotConfigPath() { return inUserData("annot.config"); }
QString PathUtils::getBackgroundTaskConfigPath() { return inUserData("bgtaskconfig.ini"); }
QString PathUtils::getAssociateCfgPath() { return inUserData("associate.ini"); }
QString PathUtils::getCommonCfgPath() { return inUserData("commoncfg.ini"); }
QString PathUtils::getTrustCAFilePath() { return inUserData("tcs"); }
QString PathUtils::getSelfSignCertStoreIndexFilePath() { return inUserData("sscsi"); }
QString PathUtils::getChatHistoryDatabasePath() { return inUserData("chatHistoryRecord.db"); }
QString PathUtils::getWatermarkDir() { return inUserData("watermark/"); }
QString PathUtils::getSignatureDir() { return created(inUserData("signature/")); }
QString PathUtils::getSealDir() { return created(inUserData("seal/")); }
QString PathUtils::getRecommendPdfDir() { return created(getAppDataDir(true) + RECOMMEND_PDF_DIRECTORY); }
QString PathUtils::getSaveChatDocContentFileDir() { return created(QDir::toNativeSeparators(inUserData("contentfile/"))); }
QString PathUtils::getWelcomeFileOpenStatePath() { return QFileInfo(inUserData("data/welcome_state.ini")).absoluteFilePath(); }

QString PathUtils::getConfigDataPath() { return locations::configData(); }
QString PathUtils::getAutoLoadDisableDirConfigDataPath() { return inApplication("cfgdata/loadcfg.ini"); }
QString PathUtils::getVersionConfigPath() { return locations::versionConfig(); }
QString PathUtils::getRecommendWatermarkDir() { return inApplication("data/watermark/"); }
QString PathUtils::getLoginReminderFolderPath() { return inApplication("data/loginreminder/"); }
QString PathUtils::getWelcomeFilePathWithUpdate() { return inApplication("data/help.pdf"); }
QString PathUtils::getThirdPartLicensePath() { return inApplication("ThirdPartyLegalNotices.txt"); }

QString PathUtils::getApplicationDir() { return locations::applicationDir(); }
QString PathUtils::getApplicationPath() { return QString::fromStdString(MacPath::getAppFullPath()); }
QString PathUtils::getChatAiPath() { return inAppDir("chatai.exe"); }
QString PathUtils::getTranslatePath() { return inAppDir(product::kTranslateTool.str()); }
QString PathUtils::getScreenShotExePath() { return inAppDir(product::kScreenshotTool.str()); }

QString PathUtils::GetEditImageBackupDir() { return created(inTempDir("backup" + QString(QDir::separator()) + getAppDataDirName())); }
QString PathUtils::getPreloadImgTempPath() { return QDir::toNativeSeparators(inTempDir("preloadFlipImg")); }

QString PathUtils::getFilePathMd5(const QString &path) { return md5(path.toLocal8Bit()); }
QString PathUtils::calculateStringMd5(const QString &text) { return md5(text.toUtf8()); }
QString PathUtils::getThumbnailPath(const QString &filePath) { return getThumbnailDir() + getFilePathMd5(filePath) + ".png"; }
QString PathUtils::GetThumbnaiPicPath(const QString &filePath) { return cachedPicture(filePath); }
QString PathUtils::GetCachePicPath(const QString &filePath) { return cachedPicture(filePath); }
QString PathUtils::getRenderCacheDir(const QString &filePath) { return created(inUserData("pagecache/") + getFilePathMd5(filePath) + '/'); }
// clang-format on

bool PathUtils::isSwithToStandard()
{
    return ini::load(inUserData("we_cache_cfg.ini")).value(QStringLiteral("tryNoChange/switch"), false).toBool();
}

QString PathUtils::getThumbnailDir()
{
    return created(MacSandbox::isSandBox() ? inSharedContainer("/thumbpics/") : inUserData("thumbpics/"));
}

bool PathUtils::isThumbnailExistAndValid(const QString &filePath, const QString &thumbPath)
{
    if (!IsFilePathExist(filePath) || !IsFilePathExist(thumbPath))
        return false;
    return QFileInfo(thumbPath).lastModified().toUTC() >= QFileInfo(filePath).lastModified().toUTC();
}

bool PathUtils::isThumbnailExistAndValid(const QString &filePath)
{
    return isThumbnailExistAndValid(filePath, getThumbnailPath(filePath));
}

QString PathUtils::getRenderCacheImagePath(const QString &filePath, int pageIndex, int renderCache)
{
    return renderCache == 0 ? getThumbnailPath(filePath) : getRenderCacheDir(filePath) + QString::number(pageIndex);
}

QString PathUtils::getContentFileFullPath(const QString &filePath)
{
    if (!IsFilePathExist(filePath))
        return {};
    QString name = QFileInfo(filePath).completeBaseName().left(kContentNameLength);
    if (!name.isEmpty() && name.at(name.size() - 1).isHighSurrogate())
        name.chop(1);
    return getSaveChatDocContentFileDir() + name + '_' + calculateStringMd5(filePath) + ".json";
}

QString PathUtils::getWelcomeFilePath()
{
    const std::string name = welcomeFileName();
    if (MacSandbox::isSandBox())
        return QDir(created(inSharedContainer("/pdfreader"))).filePath(QString::fromStdString(name));
    return inApplication("data/" + name);
}

int PathUtils::copyWelcomeFileWithUpdateToWelcomeFile()
{
    return copyFile(getWelcomeFilePathWithUpdate(), getWelcomeFilePath());
}

QString PathUtils::pathOutsideSandbox(const QStandardPaths::StandardLocation &location)
{
    return sandboxMap().value(location);
}

QString PathUtils::writableLocation(QStandardPaths::StandardLocation location)
{
    const QString folder = mapped(location);
    return folder.isEmpty() ? QStandardPaths::writableLocation(location) : folder;
}

QStringList PathUtils::standardLocations(QStandardPaths::StandardLocation location)
{
    const QString folder = mapped(location);
    return folder.isEmpty() ? QStandardPaths::standardLocations(location) : QStringList(folder);
}

QString PathUtils::writableLocationByWin8(QStandardPaths::StandardLocation)
{
    return {};
}

QString PathUtils::getExportDir(PathRecorder *recorder)
{
    if (!recorder)
        return {};
    if (recorder->m_textDir.isEmpty())
        recorder->m_textDir = writableLocation(QStandardPaths::DocumentsLocation);
    return recorder->m_textDir;
}

void PathUtils::setExportDir(QString dir, PathRecorder *recorder)
{
    if (recorder)
        recorder->m_textDir = dir;
}

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
    return DialogRun::filterOf(type);
}

void PathUtils::getOperatePath(PathType type, QString **slot, PathRecorder *recorder)
{
    if (slot && recorder)
        *slot = &DialogRun::folderOf(type, *recorder);
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
