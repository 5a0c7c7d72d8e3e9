#pragma once

#include <QByteArray>
#include <string>
#include <vector>

namespace local_sdk {

/// An open file, closed with this object.
class File
{
public:
    File() = default;
    /// Opens without following a symbolic link and without waiting for anybody.
    File(const std::string &path, int flags, int mode = 0);
    ~File();
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int descriptor() const { return m_descriptor; }
    /// Whether it is a regular file of this user that nobody else can write to. If others could read it, they no longer
    /// can.
    [[nodiscard]] bool secure() const;

    [[nodiscard]] bool readAll(QByteArray &content, qint64 maxSize) const;
    [[nodiscard]] bool writeAll(const QByteArray &content) const;

    /// Locks the file against who locks it too, and waits its turn; false when that takes more than ten seconds. The
    /// lock goes with the file or with the process, however that ends.
    [[nodiscard]] bool lock();

private:
    int m_descriptor = -1;
    bool m_locked = false;
};

enum class ReadResult { ok, missing, failed };

/// A file that is read and replaced as a whole.
struct NamedContent
{
    std::string path;
    QByteArray content;
};

/// Reads a trusted file of at most 16 MiB.
[[nodiscard]] ReadResult readFile(const std::string &path, QByteArray &content);

/// Replaces files of one folder, readable by the user only, in such a way that at any moment each is either the old or
/// the new one, and that the new ones are on the disk when this returns. False leaves the old ones, also when there is
/// no room for one of them or when it is too large to be read again. For the holder of a lock.
[[nodiscard]] bool replaceFiles(const std::vector<NamedContent> &files);

/// Removes a file, on the disk too when this returns; true when there is none afterwards.
[[nodiscard]] bool removeFile(const std::string &path);

/// Appends a line to a file, readable by the user only: wholly or not at all.
[[nodiscard]] bool appendLine(const std::string &path, const QByteArray &line);

} // namespace local_sdk
