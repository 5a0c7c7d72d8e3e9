#include "config/ini/IniStore_p.h"

#include "config/MacConfigPath_p.h"
#include "paths/RegularFile_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace ini {

namespace {

using namespace std::chrono_literals;

constexpr int kMaxSize = 16 << 20;
constexpr std::time_t kForgotten = 2; // seconds; a turn takes some milliseconds

constexpr int kMaxLinks = 40; // as many as Linux follows

constexpr int kMaxKeptFiles = 16;
constexpr int kMaxKeptSize = 64 << 10;
constexpr std::time_t kSettled = 2; // seconds; the coarsest clock of a file system

using Status = struct stat;

FileContent find(const QByteArray &name)
{
    return readRegularFile(name.toStdString(), kMaxSize);
}

/// A file that was read, and what stat() said before. Whatever changes a file gives it a time that is not before the
/// change, of whole seconds in the worst case. What stat() said is relied on only if the file had not changed for
/// longer than that when it was read; so a change since then shows, be it of the same size and within the same second
/// as another. Of a file that changed lately the bytes are compared, which saves the walk through it.
struct Kept
{
    [[nodiscard]] bool isOf(const Status &now) const
    {
        return isSettled && now.st_dev == status.st_dev && now.st_ino == status.st_ino && now.st_size == status.st_size
            && now.st_mtime == status.st_mtime && now.st_ctime == status.st_ctime;
    }

    bool isSettled = false;
    Status status{};
    Content content;
};

/// Whether the file still has a name: nobody took it for one that was left behind, and removed it.
bool isNamed(int file)
{
    Status status{};
    return ::fstat(file, &status) == 0 && status.st_nlink > 0;
}

/// Puts bytes in the place of a file, or where there is none; or leaves all as it was. The new file has one name for
/// each by which the store goes, and is made in its turn: what a killed writer left, the next one removes.
bool replace(const QByteArray &path, const QByteArray &bytes, mode_t whenNew, const Turn &turn)
{
    std::error_code error;
    fs::path end = path.toStdString(); // of the links, which may lead to what is not there yet
    for (int i = 0; i < kMaxLinks && fs::is_symlink(end, error); ++i)
        end = end.parent_path() / fs::read_symlink(end, error);
    const std::string target = end.string();
    Status old{};
    ::stat(target.c_str(), &old);
    const auto number = static_cast<uint>(std::hash<std::string>{}(path.toStdString()));
    const std::string name = target + '.' + QByteArray::number(number, 36).toStdString();
    ::unlink(name.c_str());
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kForOwner);
    if (file < 0)
        return false;
    // A QSettings notices by size and time, in milliseconds, that a file is no longer what it read.
    const fs::file_time_type earliest = fs::last_write_time(target, error) + 1ms; // long ago when there is none
    bool isDone = ::write(file, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size();
    fs::last_write_time(name, std::max(fs::file_time_type::clock::now(), earliest), error);
    mode_t mode = old.st_mode != 0 ? old.st_mode & 07777U : whenNew;
    // What an administrator changes stays the user's, and what a group shares the group's; where the system does not
    // let it, the writer's own group may no more than all others.
    if (old.st_mode != 0 && ::fchown(file, old.st_uid, old.st_gid) != 0
        && ::fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0)
        mode = (mode & ~mode_t{S_IRWXG}) | (mode & S_IRWXO) << 3U;
    isDone = isDone && ::fchmod(file, mode) == 0 && ::fsync(file) == 0 && isNamed(file) && turn.isOurs()
        && ::rename(name.c_str(), target.c_str()) == 0;
    if (!isDone && isNamed(file)) // or it is the next owner's
        ::unlink(name.c_str());
    ::close(file);
    return isDone;
}

/// The name by which a QLockFile knows this process; to it, a lock of a process of another name is left behind.
QByteArray ownName()
{
    const QString linked = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    if (!linked.isEmpty())
        return QFileInfo(linked).fileName().toUtf8();
    std::error_code ignored;
    return QFileInfo(QString::fromStdString(executablePath(ignored))).fileName().toUtf8().left(32); // as proc_name()
}

/// What a QLockFile looks for in a lock file behind the process id.
const QByteArray &ourselves()
{
    static const auto &text = *new QByteArray( // outlives every static that writes
        '\n' + ownName() + '\n' + QSysInfo::machineHostName().toUtf8() + '\n');
    return text;
}

/// Whether what a lock file says was written by a process of this machine that has ended.
bool isOfTheDead(const QByteArray &owner)
{
    const pid_t process = owner.left(owner.indexOf('\n')).toInt(); // 0 where there is no number, which is ourselves
    return owner.contains('\n' + QSysInfo::machineHostName().toUtf8() + '\n') && ::kill(process, 0) != 0
        && errno == ESRCH;
}

/// A lock file without an owner, who would have it locked. One who has not signed it yet, is about to remove it (a
/// QLockFile unlocks first), or is on another machine, may not have, and is given time. It is not removed, since the
/// one that would be removed may be the next owner's. Nor is what has a second name: no lock has, and it would be
/// written to.
int openForgotten(const QByteArray &path)
{
    Status opened{};
    Status now{};
    const int lock = ::open(path.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (lock < 0)
        return lock;
    char text[1024];
    const QByteArray owner(text, static_cast<int>(std::max<ssize_t>(::read(lock, text, sizeof text), 0)));
    if (::fstat(lock, &opened) == 0 && opened.st_nlink == 1
        && (isOfTheDead(owner) || std::abs(std::time(nullptr) - opened.st_mtime) > kForgotten)
        && ::flock(lock, LOCK_EX | LOCK_NB) == 0 && ::stat(path.constData(), &now) == 0 && now.st_ino == opened.st_ino)
        return lock;
    ::close(lock);
    return -1;
}

} // namespace

bool isSound(const QString &path)
{
    return find(QFile::encodeName(path)).isRead();
}

Content load(const QString &path, bool isUtf8)
{
    static auto &mutex = *new std::mutex; // both outlive every static that reads
    static auto &kept = *new QHash<QString, Kept>;
    const QByteArray name = QFile::encodeName(path);
    const std::time_t begin = std::time(nullptr);
    Status now{};
    const bool canBeKept = !isUtf8 && ::stat(name.constData(), &now) == 0;
    if (canBeKept) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (const auto found = kept.constFind(path); found != kept.constEnd() && found->isOf(now))
            return found->content;
    }
    const FileContent file = find(name);
    if (!canBeKept || !file.isRead() || file.bytes.size() > kMaxKeptSize)
        return Content(file.bytes, isUtf8);
    const std::lock_guard<std::mutex> lock(mutex);
    if (kept.size() >= kMaxKeptFiles && !kept.contains(path))
        kept.clear();
    Kept &entry = kept[path];
    const bool isSame = entry.content.bytes() == file.bytes;
    if (!isSame)
        entry.content = Content(file.bytes);
    entry.isSettled = begin - std::max(now.st_mtime, now.st_ctime) > kSettled;
    entry.status = now;
    if (isSame || entry.isSettled)
        entry.content.makeIndex(); // it is asked for more often than it changes
    return entry.content;
}

bool change(const QString &path, const Changes &changes, mode_t whenNew)
{
    const QByteArray name = QFile::encodeName(path);
    if (changes.isEmpty() || name.isEmpty() || name.contains('\0'))
        return changes.isEmpty();
    Status status{};
    const bool isThere = ::stat(name.constData(), &status) == 0;
    if (isThere ? !S_ISREG(status.st_mode) || ::access(name.constData(), W_OK) != 0 : errno != ENOENT)
        return false; // and nothing is made beside it
    if (!isThere)
        QDir().mkpath(QFileInfo(path).path());
    for (const auto deadline = Clock::now() + kLongestTurn; Clock::now() < deadline;) {
        const Turn turn(path, deadline);
        const FileContent old = find(name);
        if (!turn.isHad() || (!old.isRead() && old.state != FileContent::State::missing))
            return false;
        const QByteArray bytes = Content(old.bytes).with(changes);
        if (bytes == old.bytes || bytes.size() > kMaxSize)
            return bytes == old.bytes;
        if (replace(name, bytes, whenNew, turn))
            return true;
        if (turn.isOurs())
            return false;
        // A QSettings that was slow to remove its lock removed ours.
    }
    return false;
}

Turn::Turn(const QString &path, Clock::time_point deadline) : m_path(QFile::encodeName(path + QStringLiteral(".lock")))
{
    Status status{};
    while (m_lock < 0) {
        m_lock = ::open(m_path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_lock >= 0) {
            // Nobody takes it for forgotten then, be it as old as it will; somebody may have before.
            if ((::flock(m_lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) || !isNamed(m_lock)) {
                ::close(m_lock);
                m_lock = -1;
            }
        } else if (errno != EEXIST
                   || (::lstat(m_path.constData(), &status) == 0 && (!S_ISREG(status.st_mode) || status.st_nlink > 1))
                   || Clock::now() > deadline)
            return;
        else if ((m_lock = openForgotten(m_path)) < 0)
            std::this_thread::sleep_for(500us);
    }
    const QByteArray text = QByteArray::number(qint64{::getpid()}) + ourselves();
    if (::ftruncate(m_lock, 0) != 0 || ::pwrite(m_lock, text.constData(), static_cast<std::size_t>(text.size()), 0) < 0)
        qWarning("%s cannot be written", m_path.constData()); // it is ours all the same
}

Turn::~Turn()
{
    if (m_lock < 0)
        return;
    if (isOurs())
        ::unlink(m_path.constData());
    ::close(m_lock);
}

bool Turn::isOurs() const
{
    return m_lock >= 0 && isNamed(m_lock);
}

} // namespace ini
