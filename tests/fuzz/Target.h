#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>

/// Ends the process, so that the fuzzer keeps the input, unless it `holds`.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Replaces a file by `size` bytes of an input.
inline void writeFile(const QString &path, const void *data, std::size_t size)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly));
    require(file.write(static_cast<const char *>(data), static_cast<qint64>(size)) == static_cast<qint64>(size));
}
