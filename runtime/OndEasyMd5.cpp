#include "runtime/OndEasyMd5.h"

#include "runtime/Md5.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

File openForReading(const std::string &path)
{
    // Not by fopen(), which would wait for the writer of a FIFO.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status;
    const bool readable = ::fstat(descriptor, &status) == 0 && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
    File file(readable ? ::fdopen(descriptor, "rb") : nullptr, &std::fclose);
    if (!file && descriptor >= 0)
        ::close(descriptor);
    return file;
}

std::string utf8Of(const wchar_t *path)
{
    // The letter in front keeps a U+FEFF from being taken for a byte-order mark, and dropped.
    return QString::fromStdWString(L'x' + std::wstring(path)).mid(1).toStdString();
}

} // namespace

OndEasyMd5::OndEasyMd5(const wchar_t *path)
{
    // Before the file, which must not outlive it. Larger than usual: fewer calls of the system.
    char buffer[32 * 1024];
    const File file = openForReading(path ? utf8Of(path) : std::string());
    if (!file)
        return;
    std::setvbuf(file.get(), buffer, _IOFBF, sizeof buffer);

    Md5 md5;
    unsigned char chunk[1024];
    while (const std::size_t size = std::fread(chunk, 1, sizeof chunk, file.get()))
        md5.md5_update(chunk, size);
    md5.md5_finish(m_digest);
}

OndEasyMd5::OndEasyMd5(const unsigned char *data, int length)
{
    if (length < 0 || (length > 0 && !data))
        return;
    Md5 md5;
    md5.md5_update(const_cast<unsigned char *>(data), static_cast<unsigned long>(length));
    md5.md5_finish(m_digest);
}

OndEasyMd5::OndEasyMd5(const unsigned char *digest)
{
    if (digest)
        std::copy_n(digest, sizeof m_digest, m_digest);
}

const unsigned char *OndEasyMd5::GetBinary16() const
{
    const bool isZero = std::all_of(std::begin(m_digest), std::end(m_digest), [](unsigned char b) { return b == 0; });
    return isZero ? nullptr : m_digest;
}

QString OndEasyMd5::ToString() const
{
    QString text;
    if (!GetBinary16())
        return text;
    // "%02" is the place marker here, not a width: the "x" stays. Stored fingerprints have it.
    for (const unsigned char byte : m_digest)
        text += QStringLiteral("%02x").arg(byte, 2, 16, QLatin1Char('0'));
    return text;
}
