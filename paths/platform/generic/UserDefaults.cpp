#include "paths/platform/UserDefaults.h"

#include "paths/platform/Bundle.h"
#include "paths/platform/UserDirectories.h"

#include <QByteArray>
#include <QFile>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace fs = std::filesystem;

namespace {

constexpr qint64 kMaxFileSize = 64 << 20;

/// Empty when the user has no folder for data.
std::string defaultsPath()
{
    const std::string support = applicationSupportDirectory();
    std::string name = bundleIdentifier();
    // What names a folder must not lead out of it.
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
        name = fs::path(bundleExecutablePath()).filename().string();
    return support.empty() || name.empty() ? std::string() : support + "/" + name + "/user-defaults.ini";
}

/// Opens the file without ever waiting for the other side of a FIFO; false unless it is a file of bearable size.
bool openDefaults(QFile &file, int flags)
{
    const std::string path = defaultsPath();
    const int descriptor = path.empty() ? -1 : ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600);
    if (descriptor < 0)
        return false;
    struct stat status
    {
    };
    const bool usable = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kMaxFileSize;
    const auto mode = (flags & O_ACCMODE) == O_RDONLY ? QIODevice::ReadOnly : QIODevice::WriteOnly | QIODevice::Append;
    if (usable && file.open(descriptor, mode | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return false;
}

/// Keys hold paths: what would end the key or the line is encoded, the rest stays readable.
QByteArray startOfEntry(const std::string &key)
{
    return QByteArray::fromStdString(key).toPercentEncoding("/ !$&'()*+,:;@") + "=\"";
}

} // namespace

std::optional<std::vector<unsigned char>> userDefaultsData(const std::string &key)
{
    QFile file;
    if (!openDefaults(file, O_RDONLY))
        return std::nullopt;
    const QByteArray content = '\n' + file.readAll();
    const QByteArray start = '\n' + startOfEntry(key);

    for (int at = content.lastIndexOf(start); at >= 0; at = at > 0 ? content.lastIndexOf(start, at - 1) : -1) {
        const int from = at + start.size();
        const int lineEnd = content.indexOf('\n', from);
        const QByteArray rest = content.mid(from, lineEnd < 0 ? -1 : lineEnd - from);
        // A write that was cut off lacks the closing quote.
        if (!rest.endsWith('"'))
            continue;
        const auto value = QByteArray::fromBase64Encoding(rest.chopped(1), QByteArray::AbortOnBase64DecodingErrors);
        if (value)
            return std::vector<unsigned char>(value.decoded.cbegin(), value.decoded.cend());
    }
    return std::nullopt;
}

std::vector<std::string> userDefaultsKeys(const std::string &prefix)
{
    QFile file;
    if (!openDefaults(file, O_RDONLY))
        return {};
    std::set<std::string> keys;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const std::string key = QByteArray::fromPercentEncoding(line.left(line.indexOf("=\""))).toStdString();
        if (key.compare(0, prefix.size(), prefix) == 0 && keys.count(key) == 0 && userDefaultsData(key))
            keys.insert(key);
    }
    return {keys.begin(), keys.end()};
}

void setUserDefaultsData(const std::string &key, const std::vector<unsigned char> &data)
{
    std::error_code error;
    fs::create_directories(fs::path(defaultsPath()).parent_path(), error);
    QFile file;
    if (!openDefaults(file, O_WRONLY | O_APPEND | O_CREAT))
        return;
    const QByteArray bytes(reinterpret_cast<const char *>(data.data()), static_cast<int>(data.size()));
    // The line feed in front ends a line that another process could not finish.
    file.write('\n' + startOfEntry(key) + bytes.toBase64() + "\"\n");
}

void synchroniseUserDefaults()
{
    QFile file;
    if (openDefaults(file, O_RDONLY))
        ::fsync(file.handle());
}

} // namespace platform
