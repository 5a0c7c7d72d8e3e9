#pragma once

#include "config/Export.h"

#include <QImage>
#include <QString>
#include <QStringList>

/// What the reader and its companions do with the paths of files and folders.
///
/// All static, without state. Failures are false, the empty text or a code; nothing throws but for exhausted memory.
/// Callable from any thread unless said otherwise.
class ONDPDFTOOLUTILS_EXPORT PathUtils
{
public:
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
    ///@}

    /// @name Operations on files
    ///@{

    /// Removes a file; whether that was done. Folders stay.
    static bool deleteFile(const QString &path);
    /// Removes a folder and all it holds; whether that was done. Links are removed, what they lead to stays. The empty
    /// path and the root folder are refused.
    static bool deleteDirectory(const QString &path);

    /// What copyFile() answers.
    enum CopyResult : int {
        Copied = 1, ///< Or nothing to do: both files exist and have the same size.
        NoSource = 2,
        UnreadableSource = 3, ///< Also a folder or a special file.
        DestinationStays = 4, ///< Something exists at the destination and cannot be removed.
        CopyFailed = 5, ///< Nothing is left at the destination.
    };
    /// Copies a file over another, unless checkFileSameBySize() says that they are the same, and answers a CopyResult.
    /// An existing destination is removed first, so that its room is free for the copy. The destination's folder must
    /// exist.
    static int copyFile(const QString &from, const QString &to);
    /// Copies the files of a folder, hidden ones included, whose names match one of the wildcards (all, if there are
    /// none) into another folder, which is created when missing. Existing files there stay as they are; folders are not
    /// copied. False only when `fromDir` does not exist.
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
    /// Otherwise `error` receives a translated text. Nothing is decoded: what is no picture at all passes, and fails
    /// where it is read.
    static bool isPicReadable(QString path, QString &error);
    /// The picture, turned as its orientation says. When it is wider than `maxWidth` or higher than `maxHeight` pixels,
    /// it is scaled down to fit both, in proportion; no side becomes less than 1 pixel. A null image when the file
    /// cannot be read as a picture.
    static QImage ReadImageInMaxSize(QString path, int maxWidth, int maxHeight);
    ///@}
};
