#include "paths/platform/UserDefaults_p.h"

#include "paths/RegularFile_p.h"
#include "paths/platform/Bundle_p.h"
#include "paths/platform/UserDirectories_p.h"

#include <QByteArray>
#include <QFile>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace fs = std::filesystem;

namespace {

constexpr int kMaxFileSize = 64 << 20;

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

/// Opens the file for appending, without ever waiting for the reader of a FIFO; false unless it is a file that may have
/// `added` bytes more.
bool openDefaults(QFile &file, qint64 added = 0, int flags = 0)
{
    const std::string path = defaultsPath();
    flags |= O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const int descriptor = path.empty() ? -1 : ::open(path.c_str(), flags, 0600);
    if (descriptor < 0)
        return false;
    struct stat status
    {
    };
    const bool usable =
        ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size + added <= kMaxFileSize;
    constexpr auto mode = QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered;
    if (usable && file.open(descriptor, mode, QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return false;
}

/// One entry, between line feeds. Keys hold paths: what would end the key or the line is encoded, the rest stays
/// readable.
QByteArray lineOf(const std::string &key, const std::vector<unsigned char> &data)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data.data()), static_cast<int>(data.size()));
    return QByteArray::fromStdString(key).toPercentEncoding("/ !$&'()*+,:;@") + "=\"" + bytes.toBase64() + '"';
}

} // namespace

std::map<std::string, std::vector<unsigned char>> userDefaultsWithPrefix(const std::string &prefix)
{
    std::map<std::string, std::vector<unsigned char>> result;
    for (const QByteArray &line : readRegularFile(defaultsPath(), kMaxFileSize).bytes.split('\n')) {
        const int keySize = line.indexOf("=\"");
        // A write that was cut off lacks the closing quote.
        if (keySize < 0 || line.size() < keySize + 3 || !line.endsWith('"'))
            continue;
        const std::string key = QByteArray::fromPercentEncoding(line.left(keySize)).toStdString();
        const auto value = QByteArray::fromBase64Encoding(line.mid(keySize + 2, line.size() - keySize - 3),
                                                          QByteArray::AbortOnBase64DecodingErrors);
        if (value && key.compare(0, prefix.size(), prefix) == 0)
            result[key].assign(value.decoded.cbegin(), value.decoded.cend());
    }
    return result;
}

std::optional<std::vector<unsigned char>> userDefaultsData(const std::string &key)
{
    auto entries = userDefaultsWithPrefix(key);
    const auto found = entries.find(key);
    return found == entries.end() ? std::nullopt : std::optional(std::move(found->second));
}

void setUserDefaultsData(const std::string &key, const std::vector<unsigned char> &data)
{
    std::error_code error;
    fs::create_directories(fs::path(defaultsPath()).parent_path(), error);
    // The line feed in front ends a line that another process could not finish.
    const QByteArray line = '\n' + lineOf(key, data) + '\n';
    QFile file;
    if (openDefaults(file, line.size(), O_CREAT))
        file.write(line);
}

void synchroniseUserDefaults()
{
    QFile file;
    if (openDefaults(file))
        ::fsync(file.handle());
}

} // namespace platform
