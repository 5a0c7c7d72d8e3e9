#include "config/ini/IniStore_p.h"

#include <QDir>
#include <QFile>
#include <QPoint>
#include <QRect>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

QString text(FuzzedDataProvider &data)
{
    const std::string bytes = data.ConsumeRandomLengthString(24);
    return data.ConsumeBool() ? QString::fromStdString(bytes)
                              : QString(reinterpret_cast<const QChar *>(bytes.data()), int(bytes.size() / 2));
}

QVariant value(FuzzedDataProvider &data)
{
    switch (data.ConsumeIntegralInRange(0, 9)) {
    case 0:
        return data.ConsumeIntegral<qlonglong>();
    case 1:
        return data.ConsumeBool();
    case 2:
        return text(data).toUtf8();
    case 3:
        return QPoint(data.ConsumeIntegral<int>(), data.ConsumeIntegral<int>());
    case 4:
        return QRect(0, 1, 2, data.ConsumeIntegral<short>());
    case 5:
        return data.ConsumeFloatingPoint<double>();
    case 6:
        return {};
    case 7:
        return QStringList{text(data), text(data)};
    case 8:
        return QVariantList{text(data), data.ConsumeIntegral<int>(), text(data).toLatin1()};
    default:
        return text(data);
    }
}

QVariant readBySettings(const QString &path, const QString &key)
{
    return QSettings(path, QSettings::IniFormat).value(key, "absent");
}

/// Two absent numbers are not equal, and here are.
void require(const QVariant &a, const QVariant &b)
{
    if (a != b && a.toString() != b.toString())
        std::abort();
}

} // namespace

/// Values that a QSettings writes are read as it reads them, and the other way round. The names of the files are new
/// each time, since a process remembers what its QSettings wrote.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/ini-fuzz"));
    static int number = 0;
    FuzzedDataProvider data(bytes, size);
    const QString key = ini::normalized(data.ConsumeBool() ? text(data) : QStringLiteral("s/k"));
    const QVariant stored = value(data);
    // "[general]" is the general section, whatever its case: QSettings loses that of a section called so.
    if (key.isEmpty() || key.startsWith(QLatin1String("general/"), Qt::CaseInsensitive))
        return 0;
    const QString path = folder.filePath(QString::number(++number));
    {
        QSettings settings(path, QSettings::IniFormat);
        settings.setValue(key, stored);
    }
    for (const char *suffix : {"a", "b"})
        QFile::copy(path, path + suffix);
    const QVariant theirs = readBySettings(path + "a", key);
    require(ini::load(path).value(key, "absent"), theirs);

    QFile(path + "c").open(QIODevice::WriteOnly);
    const QByteArray written = ini::Content().with({{key, ini::stored(stored).value()}});
    QFile file(path + "c");
    file.open(QIODevice::WriteOnly);
    file.write(written);
    file.close();
    require(readBySettings(path + "c", key), theirs);
    for (const char *suffix : {"", "a", "b", "c"})
        QFile::remove(path + suffix);
    return 0;
}
