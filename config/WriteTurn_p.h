#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <sys/stat.h>

/// A writer's turn at an INI file, for as long as this object lives.
///
/// QSettings merges what others have written since it read the file, under a lock of its own, but tells only by the
/// file's size and its time in milliseconds that they have. A value that is replaced by one of the same length within
/// one tick of the file system's clock goes unseen, and the next writer would put the old one back. Therefore the
/// writers of this library, of all processes, take turns at the files of a folder, and no version of a file gets the
/// time of the one before.
///
/// The folder is created when it is missing, as QSettings would do. The turn comes after five seconds at the latest: a
/// process that is stopped in its turn must not stop all others.
class WriteTurn
{
public:
    explicit WriteTurn(const std::string &path);
    ~WriteTurn();
    WriteTurn(const WriteTurn &) = delete;
    WriteTurn &operator=(const WriteTurn &) = delete;

private:
    struct Version
    {
        ino_t inode;
        std::filesystem::file_time_type time;
    };

    [[nodiscard]] bool isAnothers() const;
    [[nodiscard]] std::optional<Version> version() const;

    std::string m_path;
    int m_descriptor; // the folder's, which holds the lock
    std::optional<Version> m_before;
};
