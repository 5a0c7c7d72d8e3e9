#include "config/ini/IniStore_p.h"

#include "config/MacConfigPath_p.h"
#include "paths/RegularFile_p.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSysInfo>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace ini {

namespace {

using namespace std::chrono_literals;

constexpr int kMaxSize = 16 << 20;
constexpr auto kLongestWait = 4500ms;
constexpr std::time_t kForgotten = 2; // seconds; a turn takes some milliseconds

FileContent find(const QString &path)
{
    return readRegularFile(QFile::encodeName(path).toStdString(), kMaxSize);
}

bool canBeWritten(const FileContent &found)
{
    return found.isRead() || found.state == FileContent::State::missing;
}

/// What QLockFile writes into a lock file behind the process id.
const QByteArray &ourselves()
{
    std::error_code ignored;
    static const auto &text = *new QByteArray( // outlives every static that writes
        '\n' + QFileInfo(QString::fromStdString(executablePath(ignored))).fileName().toUtf8() + '\n'
        + QSysInfo::machineHostName().toUtf8() + '\n' + QSysInfo::machineUniqueId() + '\n' + QSysInfo::bootUniqueId()
        + '\n');
    return text;
}

/// Whether the owner of a lock is surely gone: it ran on this machine, and runs no more; or nobody knows, and the lock
/// is older than any turn.
bool isStale(const QList<QByteArray> &owner, const struct stat &status)
{
    const QList<QByteArray> own = ourselves().split('\n');
    if (owner.size() > 2 && owner[2] == own[2]) {
        const pid_t process = owner[0].toInt();
        const bool isOtherBoot = owner.size() > 4 && !owner[4].isEmpty() && owner[4] != own[4];
        if (isOtherBoot || (process > 0 && ::kill(process, 0) != 0 && errno == ESRCH))
            return true;
    }
    return std::abs(std::time(nullptr) - status.st_mtime) > kForgotten;
}

} // namespace

bool isSound(const QString &path)
{
    return find(path).isRead();
}

Content load(const QString &path, bool isUtf8)
{
    return Content(find(path).bytes, isUtf8);
}

bool change(const QString &path, const Changes &changes)
{
    if (changes.isEmpty())
        return true;
    if (path.isEmpty() || !canBeWritten(find(path)))
        return false; // and nothing is made beside it
    QDir().mkpath(QFileInfo(path).path());
    const Turn turn(path);
    const FileContent old = find(path);
    if (!turn.isOurs() || !canBeWritten(old))
        return false;
    const QByteArray bytes = Content(old.bytes).with(changes);
    if (bytes == old.bytes)
        return true;
    QSaveFile file(path);
    if (bytes.size() > kMaxSize || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()
        || !file.flush())
        return false;
    if (!old.isRead())
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    // A QSettings notices by size and time, in milliseconds, that a file is no longer what it read.
    const QDateTime earliest = old.isRead() ? QFileInfo(path).lastModified().addMSecs(1) : QDateTime();
    file.setFileTime(std::max(QDateTime::currentDateTime(), earliest), QFileDevice::FileModificationTime);
    return file.commit();
}

Turn::Turn(const QString &path) : m_path(QFile::encodeName(path + QStringLiteral(".lock")))
{
    const auto deadline = std::chrono::steady_clock::now() + kLongestWait;
    while (!take() && errno == EEXIST && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(500us);
}

Turn::~Turn()
{
    if (m_lock < 0)
        return;
    ::unlink(m_path.constData());
    ::close(m_lock);
}

/// On failure, errno is EEXIST if waiting may help.
bool Turn::take()
{
    int lock = ::open(m_path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (lock >= 0)
        ::flock(lock, LOCK_EX | LOCK_NB); // nobody removes the file then, be it as old as it will
    else if (errno == EEXIST)
        lock = openStale();
    if (lock < 0)
        return false;
    const QByteArray text = QByteArray::number(qint64{::getpid()}) + ourselves();
    m_lock = lock;
    if (::ftruncate(lock, 0) == 0 && ::pwrite(lock, text.constData(), text.size(), 0) == text.size())
        return true;
    ::unlink(m_path.constData());
    ::close(std::exchange(m_lock, -1));
    errno = ENOSPC;
    return false;
}

/// Another's lock file if it is stale, and locked by us. It is not removed, since the one that would be removed may be
/// the next owner's.
int Turn::openStale() const
{
    struct stat status, now;
    if (::lstat(m_path.constData(), &status) == 0 && !S_ISREG(status.st_mode)) {
        errno = EISDIR;
        return -1;
    }
    const int lock = ::open(m_path.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    char text[1024];
    const ssize_t size = ::read(lock, text, sizeof text);
    if (::fstat(lock, &status) == 0 && size >= 0
        && isStale(QByteArray(text, static_cast<int>(size)).split('\n'), status)
        && ::flock(lock, LOCK_EX | LOCK_NB) == 0 && ::stat(m_path.constData(), &now) == 0
        && now.st_ino == status.st_ino)
        return lock;
    if (lock >= 0)
        ::close(lock);
    errno = EEXIST;
    return -1;
}

} // namespace ini
