#include "config/MacReg.h"

#include "config/MacConfigPath_p.h"
#include "config/ini/IniStore_p.h"
#include "paths/BundlePath_p.h"

#include <QDir>
#include <filesystem>
#include <optional>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

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

struct MacReg::Store
{
    QString path;
    ini::Content content;
    ini::Changes changes; // not written yet
};

MacReg::MacReg() = default;

MacReg::~MacReg()
{
    flush();
}

bool MacReg::open(const QString &key, bool mustExist)
{
    const QMutexLocker locker(&m_mutex);
    flush();
    m_store.reset();
    const std::optional<QString> file = insideRegistry(key);
    const MacConfigPath *paths = configPathOrNull();
    if (!file || !paths)
        return false;
    const std::string directory = paths->GetUserDataPath("reg/");
    const std::string name = directory + file->toStdString() + ".ini";
    qInfo("MacReg::open strRegPath = %s", name.c_str());

    mode_t type = typeOf(name, &::lstat);
    if (type == 0) {
        std::error_code ignored;
        fs::create_directories(directory, ignored);
    }
    if (type == S_IFLNK || file->contains(QLatin1Char('/'))) {
        if (!isInside(directory, name, type == S_IFLNK))
            return false;
        type = typeOf(name, &::stat);
    }
    // Of what is no file, a folder reads as empty; opening a device or a pipe might wait for ever.
    if (type != S_IFREG && (mustExist || (type != 0 && type != S_IFDIR)))
        return false;
    const QString path = QString::fromStdString(name);
    m_store = std::make_unique<Store>(Store{path, ini::load(path), {}});
    return true;
}

QVariant MacReg::value(const QString &name, const QVariant &defaultValue) const
{
    const QMutexLocker locker(&m_mutex);
    if (!m_store)
        return defaultValue;
    const QString key = ini::normalized(name);
    if (const auto change = m_store->changes.constFind(key); change != m_store->changes.constEnd())
        return ini::read(*change).value_or(defaultValue);
    return m_store->content.value(key, defaultValue);
}

void MacReg::setValue(const QString &name, const QVariant &value)
{
    const QMutexLocker locker(&m_mutex);
    const QString key = ini::normalized(name);
    const std::optional<QByteArray> stored = ini::stored(value);
    if (m_store && !key.isEmpty() && stored)
        m_store->changes[key] = *stored;
}

bool MacReg::hasKey(const QString &name) const
{
    const QMutexLocker locker(&m_mutex);
    const QString key = ini::normalized(name);
    return m_store && (m_store->changes.contains(key) || m_store->content.contains(key));
}

QStringList MacReg::names() const
{
    const QMutexLocker locker(&m_mutex);
    if (!m_store)
        return {};
    m_store->content.makeIndex(); // for who asks for every value
    QStringList names = m_store->content.keys() + m_store->changes.keys();
    names.sort();
    names.removeDuplicates();
    return names;
}

bool MacReg::sync()
{
    const QMutexLocker locker(&m_mutex);
    if (!m_store)
        return false;
    flush();
    m_store->content = ini::load(m_store->path);
    return true;
}

/// Writes what was changed, or drops it.
void MacReg::flush()
{
    if (m_store && !m_store->changes.isEmpty() && !ini::change(m_store->path, m_store->changes))
        qWarning("MacReg::sync cannot write %s", qUtf8Printable(m_store->path));
    if (m_store)
        m_store->changes.clear();
}
