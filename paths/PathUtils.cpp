#include "paths/PathUtils.h"

#include "config/Locations_p.h"
#include "config/MacGlobalConfig.h"
#include "config/ProductCfgUtil.h"
#include "config/ini/IniStore_p.h"
#include "paths/MacPath.h"
#include "paths/MacSandbox.h"
#include "paths/PathRecorder.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <identity.h>

using locations::created;
using locations::inApplication;
using locations::inUserData;

namespace {

constexpr char RECOMMEND_PDF_DIRECTORY[] = "pdf/";
constexpr masked::View HARBO_EDITION_DIR_NAME = product::kHarboDataDirName;

constexpr int kContentNameLength = 30;

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
