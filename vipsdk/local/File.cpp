#include "vipsdk/local/File.h"

#include <QUuid>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <future>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace local_sdk {

namespace {

constexpr int kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr qint64 kMaxSize = 16 << 20;
constexpr std::chrono::seconds kLockTime{10};

/// Has what was written reach the disk itself. The fsync(2) of macOS leaves it in the drive's memory; what flushes that
/// is not known to every file system.
bool flush(int descriptor)
{
#ifdef F_FULLFSYNC
    if (::fcntl(descriptor, F_FULLFSYNC) == 0)
        return true;
#endif
    return ::fsync(descriptor) == 0;
}

/// Has the names of a folder written to the disk. Not every file system can, and the file itself is safe by then.
void syncDirectory(const std::string &path)
{
    const File directory(std::filesystem::path(path).parent_path().string() + "/.", O_RDONLY | O_DIRECTORY);
    if (directory.isOpen())
        flush(directory.descriptor());
}

std::string newName(const NamedContent &file)
{
    return file.path + ".new";
}

bool writeNew(const std::string &path, const QByteArray &content)
{
    // What a process that was killed left here is of no use. A folder may be somebody's: it gets another name.
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        std::rename(path.c_str(), (path + QUuid::createUuid().toByteArray().toStdString()).c_str());
    const File file(path, O_WRONLY | O_CREAT | O_EXCL, kOwnerOnly);
    return file.isOpen() && file.writeAll(content) && flush(file.descriptor());
}

} // namespace

File::File(const std::string &path, int flags, int mode)
{
    constexpr int always = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    do
        m_descriptor = ::open(path.c_str(), flags | always, mode);
    while (m_descriptor < 0 && errno == EINTR);
}

File::~File()
{
    if (m_locked)
        ::flock(m_descriptor, LOCK_UN); // a child that was forked meanwhile still has the file open
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool File::secure() const
{
    struct stat status
    {
    };
    if (::fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != ::geteuid()
        || (status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return false;
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        ::fchmod(m_descriptor, kOwnerOnly);
    return true;
}

bool File::readAll(QByteArray &content, qint64 maxSize) const
{
    char block[8192];
    for (;;) {
        const ssize_t count = ::read(m_descriptor, block, sizeof block);
        if (count == 0)
            return true;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || content.size() + count > maxSize)
            return false;
        content.append(block, static_cast<int>(count));
    }
}

bool File::writeAll(const QByteArray &content) const
{
    const char *next = content.constData();
    const char *end = next + content.size();
    while (next != end) {
        const ssize_t count = ::write(m_descriptor, next, static_cast<std::size_t>(end - next));
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            next += count;
    }
    return true;
}

bool File::lock()
{
    m_locked = ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
    if (m_locked || errno != EWOULDBLOCK)
        return m_locked;
    // The system keeps the turns of those who wait, but knows no deadline. So another thread waits, with a descriptor
    // of its own for the same open file: who gives up closes this one, and the lock is free when that one is closed
    // too.
    const int descriptor = ::fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0);
    std::promise<bool> promise;
    std::future<bool> isLocked = promise.get_future();
    try {
        std::thread([descriptor, promise = std::move(promise)]() mutable {
            int result = 0;
            do
                result = ::flock(descriptor, LOCK_EX);
            while (result != 0 && errno == EINTR);
            ::close(descriptor);
            promise.set_value(result == 0);
        }).detach();
    } catch (const std::system_error &) {
        ::close(descriptor);
        return false;
    }
    m_locked = isLocked.wait_for(kLockTime) == std::future_status::ready && isLocked.get();
    return m_locked;
}

ReadResult readFile(const std::string &path, QByteArray &content)
{
    const File file(path, O_RDONLY);
    if (!file.isOpen())
        return errno == ENOENT ? ReadResult::missing : ReadResult::failed;
    return file.secure() && file.readAll(content, kMaxSize) ? ReadResult::ok : ReadResult::failed;
}

bool replaceFiles(const std::vector<NamedContent> &files)
{
    const auto isWritten = [](const NamedContent &file) {
        return file.content.size() <= kMaxSize && writeNew(newName(file), file.content);
    };
    // All are on the disk before the first one takes its place, so that none stays behind for want of room.
    bool done = std::all_of(files.begin(), files.end(), isWritten);
    for (const NamedContent &file : files)
        done = done && std::rename(newName(file).c_str(), file.path.c_str()) == 0;
    if (done)
        syncDirectory(files.front().path);
    else
        for (const NamedContent &file : files)
            ::unlink(newName(file).c_str());
    return done;
}

bool removeFile(const std::string &path)
{
    if (::unlink(path.c_str()) != 0)
        return errno == ENOENT;
    syncDirectory(path);
    return true;
}

bool appendLine(const std::string &path, const QByteArray &line)
{
    File file(path, O_RDWR | O_APPEND | O_CREAT, kOwnerOnly);
    if (!file.isOpen() || !file.secure() || !file.lock())
        return false;
    const off_t end = ::lseek(file.descriptor(), 0, SEEK_END);
    // A process that was killed may have left a piece of a line, which ends here.
    char last = '\n';
    if (end > 0 && ::pread(file.descriptor(), &last, 1, end - 1) != 1)
        return false;
    if (file.writeAll((last == '\n' ? line : '\n' + line) + '\n'))
        return true;
    if (::ftruncate(file.descriptor(), end) != 0) { } // the next line begins anew anyway
    return false;
}

} // namespace local_sdk
