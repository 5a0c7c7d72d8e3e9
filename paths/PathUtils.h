#pragma once

#include "config/Export.h"

#include <QFileDialog>
#include <QImage>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

class PathRecorder;

/// Where the product's well-known files and folders are, and what the reader does with files: free names, dialogs,
/// pictures, small operations.
///
/// All static. Failures are false, the empty text or a code; nothing throws but for exhausted memory. Callable from any
/// thread unless said otherwise.
///
/// Locations are absolute paths; folders end in "/". The getters always answer. A base folder that cannot be determined
/// counts as the empty text, so that only the name is left. The caller checks whether anything exists there. Every
/// getter below the user data folder creates that folder when it is missing; what else is created on the way is said
/// beside the getter. Folders are created on every call, with all their parents, unless their base folder is unknown.
/// If that fails, the answer is the same path.
class ONDPDFTOOLUTILS_EXPORT PathUtils
{
public:
    /// @name Base folders
    ///@{

    /// The user data folder (MacConfigPath::GetUserDataPath()), created if `create`.
    static QString getAppDataDir(bool create);
    /// The name of the product's data folder in this edition, without "/".
    static QString getAppDataDirName();
    /// The system's folder for temporary files, or the empty text.
    static QString getTempDir();
    /// The folder of the running executable, and the executable.
    static QString getApplicationDir();
    static QString getApplicationPath();
    ///@}

    /// @name In the user data folder
    ///@{

    /// The file or folder that the function is named after.
    static QString getHighLightFastColorFilePath();
    static QString getUnderlineFastColorFilePath();
    static QString getUrlsTrustedConfigPath();
    static QString GetAttachmentTrustConfigPath();
    static QString getScreenshotFolderPath();
    /// The user data folder itself is created only if `create`.
    static QString getAppConfigPath(bool create);
    static QString getAppHotKeyPath();
    static QString getAnnotConfigPath();
    static QString getBackgroundTaskConfigPath();
    static QString getAssociateCfgPath();
    static QString getCommonCfgPath();
    static QString getTrustCAFilePath();
    static QString getSelfSignCertStoreIndexFilePath();
    static QString getChatHistoryDatabasePath();
    static QString getWatermarkDir();
    static QString getSignImageSavePath(); ///< A folder, without "/".
    static QString getSignatureDir(); ///< Created.
    static QString getSealDir(); ///< Created.
    static QString getRecommendPdfDir(); ///< Created.
    static QString getSaveChatDocContentFileDir(); ///< Created. In native separators.
    /// Where the welcome document's state (open or not) is kept.
    static QString getWelcomeFileOpenStatePath();
    /// Whether the switch "tryNoChange/switch" of the INI file "we_cache_cfg.ini" is on; off without one.
    static bool isSwithToStandard();
    ///@}

    /// @name In the installed application
    /// Below the bundle's resources; empty outside a bundle. Nothing is created.
    ///@{

    /// The file or folder that the function is named after.
    static QString getConfigDataPath();
    static QString getAutoLoadDisableDirConfigDataPath();
    static QString getVersionConfigPath();
    static QString getRecommendWatermarkDir();
    static QString getLoginReminderFolderPath();
    /// The welcome document that an update brings.
    static QString getWelcomeFilePathWithUpdate();
    static QString getThirdPartLicensePath();
    ///@}

    /// @name Beside the executable
    ///@{

    /// Programs of the product, which need not be installed.
    static QString getChatAiPath();
    static QString getTranslatePath();
    static QString getScreenShotExePath();
    ///@}

    /// @name In the folder for temporary files
    ///@{

    static QString GetEditImageBackupDir(); ///< Created.
    static QString getPreloadImgTempPath(); ///< Not created. In native separators.
    ///@}

    /// @name Caches of what was made from a document
    /// A document's key is the MD5 digest of its path as it is written: two spellings of one path have two entries.
    ///@{

    /// Digest of the path in the local 8-bit encoding, and of a text in UTF-8: 32 lower-case hexadecimal digits.
    static QString getFilePathMd5(const QString &path);
    static QString calculateStringMd5(const QString &text);

    /// The folder of thumbnails, created. With the sandbox on it lies in the container that the product's processes
    /// share; otherwise in the user data folder.
    static QString getThumbnailDir();
    /// A document's thumbnail. Creates the folder of thumbnails.
    static QString getThumbnailPath(const QString &filePath);
    /// The same, but empty when the document does not exist or the folder of thumbnails cannot be created. Two names
    /// for one answer.
    static QString GetThumbnaiPicPath(const QString &filePath);
    static QString GetCachePicPath(const QString &filePath);
    /// Whether document and thumbnail exist and the thumbnail was not modified before the document.
    static bool isThumbnailExistAndValid(const QString &filePath, const QString &thumbPath);
    /// The same for the thumbnail at getThumbnailPath().
    static bool isThumbnailExistAndValid(const QString &filePath);

    /// The folder of a document's rendered pages in the user data folder, created.
    static QString getRenderCacheDir(const QString &filePath);
    /// A rendered page in that folder, which is created; the document's thumbnail when `renderCache` is 0.
    static QString getRenderCacheImagePath(const QString &filePath, int pageIndex, int renderCache);
    /// The extracted content of a document, named after its base name's first 30 characters (less one that would be cut
    /// in half) and its key, in getSaveChatDocContentFileDir(). Empty when the document does not exist.
    static QString getContentFileFullPath(const QString &filePath);
    ///@}

    /// @name The welcome document
    ///@{

    /// With the sandbox on: in the folder "pdfreader" of the shared container, which is created; otherwise in the
    /// installed application. Its name depends on product and edition.
    static QString getWelcomeFilePath();
    /// Puts the document that an update brought in the place of the welcome document; a CopyResult.
    static int copyWelcomeFileWithUpdateToWelcomeFile();
    ///@}

    /// @name The user's own folders
    /// Without a trailing "/". Nothing is created.
    ///@{

    /// Desktop, Downloads and Documents in the user's real home folder, whatever the sandbox says; empty for all other
    /// locations.
    static QString pathOutsideSandbox(const QStandardPaths::StandardLocation &location);
    /// QStandardPaths::writableLocation(); with the sandbox on pathOutsideSandbox(), unless that is empty.
    static QString writableLocation(QStandardPaths::StandardLocation location);
    /// QStandardPaths::standardLocations(); with the sandbox on only pathOutsideSandbox(), unless that is empty.
    static QStringList standardLocations(QStandardPaths::StandardLocation location);
    /// Always empty: it answers on the product's other platforms only.
    static QString writableLocationByWin8(QStandardPaths::StandardLocation location);

    /// The folder for exports, which `recorder` remembers beside text files; writableLocation() of Documents is put
    /// there when it has none. Empty without a recorder. Callable from the thread that uses the recorder.
    static QString getExportDir(PathRecorder *recorder);
    /// Nothing happens without a recorder.
    static void setExportDir(QString dir, PathRecorder *recorder);
    ///@}

    /// @name Names that are still free
    /// Candidates are tried in turn: the path itself; numbers from 1 to `numberedLimit` - 1; the local date and time
    /// "MMddhhmmsszzz" (hours 01 to 12) up to attempt `giveUpLimit` - 1. Empty when none of them is free. Nothing is
    /// created: another process may take the name first.
    ///@{

    /// "dir/report.pdf", "dir/report(1).pdf", ... Whatever exists at a candidate takes it. A name without suffix still
    /// gets the dot: "notes(1).".
    static QString GetPathNoConflit(const QString &filePath, int numberedLimit, int giveUpLimit);
    /// "dir", "dir(1)", ... Only folders take a candidate. The number follows the path as it is written: "dir/(1)".
    static QString GetDirectoryNoConflit(const QString &dirPath, int numberedLimit, int giveUpLimit);
    ///@}

    /// @name Parts of a name
    /// No look at the file system. The file name is what follows the last "/", or in a path without one the last "\";
    /// the whole path when it has neither.
    ///@{

    /// The file name.
    static QString PathToFileName(const QString &path);
    /// What follows the last "." of the file name; the whole file name when it has none.
    static QString PathToSuffix(const QString &path);
    /// What precedes the last "." of the file name; the whole file name when it has none.
    static QString PathRemoveSuffix(const QString &path);
    /// PathToFileName() of the path as UTF-32: half a surrogate pair comes back as U+FFFD.
    static QString getDirPathAlias(const QString &path);
    ///@}

    /// @name Questions to the file system
    ///@{

    /// Whether something that is no folder exists there: links are followed, special files count.
    static bool IsFilePathExist(const QString &path);
    /// Whether a folder exists there; false for the empty path.
    static bool isDirPathExist(const QString &path);
    /// Absolute path of the folder that holds an existing file, without a trailing "/"; empty if IsFilePathExist() is
    /// false.
    static QString getFilePathDir(const QString &path);
    /// Makes `path` absolute, against the current folder. The empty path stays empty.
    static void GetPathWithCaseSensitive(QString &path);
    /// Whether both files exist and have the same size. Contents are not compared, on purpose.
    static bool checkFileSameBySize(const QString &a, const QString &b);
    /// Whether the file cannot be opened for reading and writing; true for a missing one, which is not created.
    static bool isFileInUse(const QString &path);
    /// Whether the path begins with "//" or "ftp://" (this case only) and has at least three characters.
    static bool isNetworkDiskPath(const QString &path);
    /// Whether the path is a drive: it has one "/", at its end ("C:/"; a double backslash counts as one "/"), or
    /// the device that holds it is none of "/dev/disk*", as on macOS the disks are. True for a path that does not
    /// exist.
    static bool isDiskRootPath(const QString &path);
    /// Whether a folder may be read. With the sandbox on the user is asked for access to one that may not: main thread
    /// only. Always true with the sandbox off, but false for the empty path.
    static bool checkDirPermission(const QString &dir);
    ///@}

    /// @name Operations on files
    ///@{

    /// Removes a file; whether that was done. Folders stay.
    static bool deleteFile(const QString &path);
    /// Removes a folder and all it holds; whether all of it went. Links are removed, what they lead to stays, also when
    /// `path` is a link with "/" or "/." behind it. The empty path and the root folder are refused.
    static bool deleteDirectory(const QString &path);

    /// What copyFile() answers.
    enum CopyResult : int {
        Copied = 1, ///< Or nothing to do: both files exist and have the same size.
        NoSource = 2,
        UnreadableSource = 3, ///< Also a folder or a special file.
        DestinationStays = 4, ///< Something exists at the destination and cannot be removed.
        CopyFailed = 5, ///< Nothing is left at the destination.
    };
    /// Copies a file over another, unless checkFileSameBySize() says that they are the same or both paths lead to one
    /// file, and answers a CopyResult.
    /// An existing destination is removed first, so that its room is free for the copy. The destination's folder must
    /// exist.
    static int copyFile(const QString &from, const QString &to);
    /// Copies the files of a folder, hidden ones included, whose names match one of the wildcards, in any case of
    /// letters (all, if there are none), into another folder, which is created when missing. Existing files there stay
    /// as they are; folders are not copied, nor is what is no regular file. False only when `fromDir` does not exist or
    /// `toDir` is empty.
    static bool copyFilterFileInDir(const QString &fromDir, const QString &toDir, const QStringList &nameFilters);

    /// Opens a file with the application that the system has for it; whether that was started. Main thread, with a
    /// QGuiApplication.
    static bool openFile(const QString &path);
    /// The same for a path that exists; false for others.
    static bool openFileEx(const QString &path);
    /// Shows a folder in the file manager, or a file in its folder; whether that was started. Main thread, with a
    /// QGuiApplication.
    static bool OpenDirectory(const QString &path);
    /// Shows the folder that holds a file in the file manager, with the file selected where the system can. Main
    /// thread, with a QGuiApplication.
    static bool openFolderAndSelectFile(const QString &path);
    ///@}

    /// @name Pictures
    ///@{

    /// Suffixes of the picture formats that the reader inserts.
    static QStringList getSupportPicSuffix();
    /// Whether a picture is within the limits of insertion: 20971520 bytes (20 MiB), 10000 pixels in each direction.
    /// Otherwise `error` receives a translated text. Nothing is decoded: what is no picture of those formats passes,
    /// and fails where it is read.
    static bool isPicReadable(QString path, QString &error);
    /// The picture, turned as its orientation says. When it is wider than `maxWidth` or higher than `maxHeight` pixels,
    /// it is scaled down to fit both, in proportion; no side becomes less than 1 pixel. A null image when the file
    /// cannot be read as a picture.
    static QImage ReadImageInMaxSize(QString path, int maxWidth, int maxHeight);
    ///@}

    /// @name Dialogs
    /// Main thread, with a QApplication. A dialog opens in the folder that `recorder` remembers for its type; one that
    /// has none yet gets `defaultDir`. There the name `fileName` is proposed. `filter` replaces the filter of the type
    /// unless it is empty; the rest goes to QFileDialog as it is. The folder that the user chose from is remembered.
    /// Empty, and nothing new is remembered, when the user cancelled; empty, without a dialog, for a null recorder,
    /// which must live as long as the dialog.
    ///@{

    /// What a dialog is for. Other values have no filter and share the folder of documents.
    enum PathType : int {
        PicturePath = 1, ///< Has a folder of its own.
        PdfPath = 2,
        MixedPath = 3, ///< Documents and pictures, together and one by one; has a folder of its own.
        TextPath = 4, ///< Shares its folder with the exports.
        OfficePath = 5,
        AnyPath = 6,
        SheetPath = 7,
        ConvertiblePath = 8, ///< What MixedPath offers.
    };

    /// The filter of a type, for QFileDialog: line feeds separate the entries. Empty for other values.
    static QString getFilter(PathType type);
    /// Lets `*slot` point at the folder that `recorder` remembers for a type. Nothing happens when either is null.
    static void getOperatePath(PathType type, QString **slot, PathRecorder *recorder);

    /// Asks for a file to open. Without a `defaultDir` the first dialog opens in writableLocation() of Documents.
    static QString getOpenFileName(PathType type, const QString &defaultDir, PathRecorder *recorder,
                                   QWidget *parent = nullptr, const QString &caption = QString(),
                                   const QString &fileName = QString(), const QString &filter = QString(),
                                   QString *selectedFilter = nullptr, QFileDialog::Options options = {});
    /// Asks for files to open, with the process-wide recorder; the folder of the first one is remembered.
    static QStringList getOpenFileNames(PathType type, const QString &defaultDir, QWidget *parent = nullptr,
                                        const QString &caption = QString(), const QString &fileName = QString(),
                                        const QString &filter = QString(), QString *selectedFilter = nullptr,
                                        QFileDialog::Options options = {});
    /// Asks where to save. Without a `defaultDir` the first dialog opens in the root folder.
    static QString getSaveFileName(PathType type, const QString &defaultDir, PathRecorder *recorder,
                                   QWidget *parent = nullptr, const QString &caption = QString(),
                                   const QString &fileName = QString(), const QString &filter = QString(),
                                   QString *selectedFilter = nullptr, QFileDialog::Options options = {});
    ///@}
};
