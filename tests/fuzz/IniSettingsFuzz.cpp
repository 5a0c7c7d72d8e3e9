#include "config/ini/IniContent_p.h"
#include "tests/fuzz/Target.h"

#include <QPoint>
#include <QRect>
#include <QSettings>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

QString text(FuzzedDataProvider &data)
{
    const std::string bytes = data.ConsumeRandomLengthString(24);
    const QString text = data.ConsumeBool()
        ? QString::fromStdString(bytes)
        : QString(reinterpret_cast<const QChar *>(bytes.data()), int(bytes.size() / 2));
    // QSettings of Qt 6 loses half a character.
    return QT_VERSION_MAJOR >= 6 ? QString::fromUtf8(text.toUtf8()) : text;
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

using Values = QMap<QString, QVariant>;

/// What a QSettings finds in a file, which must not have been there before: a process remembers what it read.
Values readBySettings(const QString &path, const QStringList &keys)
{
    const QSettings settings(path, QSettings::IniFormat);
    Values values;
    for (const QString &key : keys)
        values[key] = settings.value(key, "absent");
    return values;
}

void requireSame(const Values &a, const Values &b)
{
    // Two numbers that are none are not equal, and here are.
    for (auto value = a.begin(); value != a.end(); ++value)
        require(*value == b[value.key()] || value->toString() == b[value.key()].toString());
}

} // namespace

/// Values that a QSettings writes are read as it reads them, and the other way round.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/ini-fuzz"));
    static int number = 0;
    FuzzedDataProvider data(bytes, size);
    Values values;
    while (data.remaining_bytes() > 0) {
        const QString key = ini::normalized(data.ConsumeBool() ? text(data) : QStringLiteral("s/k"));
        // "[general]" is the general section, whatever its case: QSettings loses that of a section called so.
        if (!key.isEmpty() && !key.startsWith(QLatin1String("general/"), Qt::CaseInsensitive))
            values[key] = value(data);
    }
    const QString path = folder.filePath(QString::number(++number));
    ini::Changes changes;
    {
        QSettings settings(path, QSettings::IniFormat);
        for (auto value = values.begin(); value != values.end(); ++value) {
            settings.setValue(value.key(), *value);
            changes[value.key()] = ini::stored(*value).value();
        }
    }
    QFile written(path);
    const ini::Content content(written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray());
    QFile::rename(path, path + "a");
    const QByteArray ours = ini::Content().with(changes);
    writeFile(path + "b", ours.data(), static_cast<std::size_t>(ours.size()));

    const Values theirs = readBySettings(path + "a", values.keys());
    Values found;
    for (const QString &key : values.keys())
        found[key] = content.value(key, "absent");
    requireSame(found, theirs);
    requireSame(readBySettings(path + "b", values.keys()), theirs);
    QFile::remove(path + "a");
    QFile::remove(path + "b");
    return 0;
}
