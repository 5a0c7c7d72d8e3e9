#include "config/MacReg.h"

#include "config/IniFile_p.h"
#include "config/MacConfigPath_p.h"
#include "config/WriteTurn_p.h"
#include "paths/BundlePath_p.h"

#include <QDir>
#include <QThread>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <shared_mutex>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

/// The files that this process has changed in memory. QSettings objects on one file share these changes, so that
/// opening one may write what was changed through another.
struct UnsavedFiles
{
    std::shared_mutex mutex;
    std::multiset<std::string> paths;
};

UnsavedFiles &unsavedFiles()
{
    static auto *const files = new UnsavedFiles; // outlives every static MacReg
    return *files;
}

/// Does what writes the file if this process has changed it: then in a turn of its own, and otherwise while nobody
/// begins to change it.
template <typename Action> void atTurn(const std::string &path, Action action)
{
    UnsavedFiles &unsaved = unsavedFiles();
    std::shared_lock<std::shared_mutex> lock(unsaved.mutex);
    std::optional<WriteTurn> turn;
    if (unsaved.paths.count(path) > 0) {
        lock.unlock();
        turn.emplace(path);
    }
    action();
}

/// The key's file, relative to the registry's folder and without ".ini"; nothing for a key that would leave it.
std::optional<QString> insideRegistry(const QString &key)
{
    if (key.contains(QChar::Null))
        return std::nullopt;
    if (!key.contains(QLatin1Char('/')))
        return key;
    // A last component ".." is the beginning of a file name.
    QString file = QDir::cleanPath(key + QLatin1Char('x'));
    if (file.startsWith(QLatin1Char('/')) || file.startsWith(QLatin1String("../")))
        return std::nullopt;
    file.chop(1);
    return file;
}

/// What the file is (S_IFMT); 0 when there is none. Cheaper than std::filesystem, which takes a path apart first.
mode_t typeOf(const std::string &path, int (*ask)(const char *, struct stat *))
{
    struct stat status
    {
    };
    return ask(path.c_str(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

/// The value in a form that QSettings writes without serializing it, which ini::readable() does not take: texts,
/// numbers and lists of them as they are, most others as a text. Invalid for what has none.
QVariant storable(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::QByteArray:
    case QMetaType::QDateTime:
    case QMetaType::QPoint:
    case QMetaType::QRect:
    case QMetaType::QSize:
        return value;
    case QMetaType::QVariantList: {
        QVariantList parts;
        for (const QVariant &part : value.toList())
            parts += storable(part);
        return parts;
    }
    default:
        return value.canConvert<QString>() ? value.toString() : QVariant();
    }
}

/// Whether `path` lies in `directory` once symbolic links are resolved. One that leads nowhere does not: it might lead
/// anywhere by the time it is written through.
bool isInside(const fs::path &directory, const fs::path &path, bool isLink)
{
    std::error_code ignored; // an empty path is the answer then
    const std::string root = withTrailingSlash(fs::canonical(directory, ignored));
    const fs::path real = isLink ? fs::canonical(path, ignored) : fs::weakly_canonical(path, ignored);
    return !root.empty() && real.string().compare(0, root.size(), root) == 0;
}

} // namespace

MacReg::MacReg() = default;

MacReg::~MacReg()
{
    close();
}

bool MacReg::open(const QString &key, bool mustExist)
{
    const QMutexLocker locker(&m_mutex);
    close();
    const std::optional<QString> file = insideRegistry(key);
    const MacConfigPath *paths = configPathOrNull();
    if (!file || !paths)
        return false;
    const std::string directory = paths->GetUserDataPath("reg/");
    m_path.assign(directory).append(file->toUtf8().constData()).append(".ini");
    qInfo("MacReg::open strRegPath = %s", m_path.c_str());

    mode_t type = typeOf(m_path, &::lstat);
    if (type == 0) {
        std::error_code ignored;
        fs::create_directories(directory, ignored);
    }
    if (type == S_IFLNK || file->contains(QLatin1Char('/'))) {
        if (!isInside(directory, m_path, type == S_IFLNK))
            return false;
        type = typeOf(m_path, &::stat);
    }
    // Of what is no file, a folder reads as empty; opening a device or a pipe might wait for ever.
    if (type != S_IFREG && (mustExist || (type != 0 && type != S_IFDIR)))
        return false;
    openStore();
    return true;
}

QVariant MacReg::value(const QString &name, const QVariant &defaultValue) const
{
    const QMutexLocker locker(&m_mutex);
    return m_settings && !name.isEmpty() ? m_settings->value(name, defaultValue) : defaultValue;
}

void MacReg::setValue(const QString &name, const QVariant &value)
{
    const QMutexLocker locker(&m_mutex);
    const QVariant stored = storable(value);
    if (m_settings && !name.isEmpty() && stored.isValid() == value.isValid() && prepareChange())
        m_settings->setValue(name, stored);
}

bool MacReg::hasKey(const QString &name) const
{
    const QMutexLocker locker(&m_mutex);
    return m_settings && !name.isEmpty() && m_settings->contains(name);
}

QStringList MacReg::names() const
{
    const QMutexLocker locker(&m_mutex);
    return m_settings ? m_settings->allKeys() : QStringList();
}

bool MacReg::sync()
{
    const QMutexLocker locker(&m_mutex);
    if (!m_settings)
        return false;
    flush();
    return true;
}

void MacReg::openStore()
{
    atTurn(m_path, [this] {
        const QString path = QString::fromStdString(m_path);
        // A missing file is opened all the same: it appears with the first value.
        m_settings.emplace(typeOf(m_path, &::lstat) == 0 ? path : ini::readable(path), QSettings::IniFormat);
    });
}

/// False when the change could not be written: QSettings would wait for good for a lock file that is none.
bool MacReg::prepareChange()
{
    if (m_isChanged)
        return true;
    if (!ini::isWritable(QString::fromStdString(m_path)))
        return false;
    // The event loop of the thread that a QSettings object belongs to would write changes beside our lock, at any time.
    // One that belongs to no thread is left alone.
    if (m_settings->thread()) {
        if (m_settings->thread() != QThread::currentThread())
            openStore();
        m_settings->moveToThread(nullptr);
    }
    UnsavedFiles &unsaved = unsavedFiles();
    const std::lock_guard<std::shared_mutex> lock(unsaved.mutex);
    unsaved.paths.insert(m_path);
    m_isChanged = true;
    return true;
}

void MacReg::flush()
{
    atTurn(m_path, [this] { m_settings->sync(); });
    if (!m_isChanged)
        return;
    UnsavedFiles &unsaved = unsavedFiles();
    const std::lock_guard<std::shared_mutex> lock(unsaved.mutex);
    unsaved.paths.erase(unsaved.paths.find(m_path));
    m_isChanged = false;
}

void MacReg::close()
{
    if (m_isChanged)
        flush();
    m_settings.reset();
}
