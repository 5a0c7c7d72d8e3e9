#pragma once

#include "config/ini/IniContent_p.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <sys/types.h>

/// The INI files that the stores of this library stand on. Callable from any thread.
namespace ini {

/// Permissions of a new file: of what the user keeps, and of what lies in the application, which all users share.
inline constexpr mode_t kForOwner = 0600;
inline constexpr mode_t kForAll = 0644;

/// Whether a file can be read: a regular one of at most 16 MiB. Opening a FIFO would wait for a writer.
[[nodiscard]] bool isSound(const QString &path);
/// The file as it is on the disk now; an empty one for what is missing, not sound or cannot be read. Small files are
/// kept: one that did not change lately is not read again until stat() shows that it did, others are read and compared.
[[nodiscard]] Content load(const QString &path, bool isUtf8 = false);
/// Sets values in the file, which is replaced as a whole or not at all; what others write at the same moment is kept
/// (Turn). Creates a missing file with these permissions, and its folders. Whether the values stand there now; false,
/// and nothing is changed, when the file is not sound, would exceed 16 MiB, or cannot be read or written.
///
/// The new file is made beside the old one, with a name that always is the same for a store; what lies in its place is
/// removed, and nothing is written where that is a folder. A writer that is killed leaves it to the next one. It has
/// the permissions of the old one, and its owner and group as far as the system lets the writer give it away.
bool change(const QString &path, const Changes &changes, mode_t whenNew = kForOwner);

using Clock = std::chrono::steady_clock;
/// To wait for one's turn, and for another if it is lost.
inline constexpr std::chrono::milliseconds kLongestTurn(4500);

/// A writer's turn at a file: its lock file, which QSettings makes and heeds too, in all processes and threads. Waits
/// at most five seconds, since a process that is stopped in its turn must not stop all others; not at all for a lock of
/// a process that has ended, two seconds for any other that nobody holds. What is no lock (a link, a folder, a file
/// with a second name) is left alone, and nobody's turn comes.
class Turn
{
public:
    explicit Turn(const QString &path, Clock::time_point deadline = Clock::now() + kLongestTurn);
    ~Turn();
    Turn(const Turn &) = delete;
    Turn &operator=(const Turn &) = delete;

    /// Whether the lock was had.
    [[nodiscard]] bool isHad() const { return m_lock >= 0; }
    /// Whether the file may be changed: the lock was had, and nobody removed it since.
    [[nodiscard]] bool isOurs() const;

private:
    QByteArray m_path; // of the lock file
    int m_lock = -1;
};

} // namespace ini
