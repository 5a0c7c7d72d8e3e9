#include "config/ini/IniContent_p.h"
#include "tests/fuzz/Target.h"

#include <QPoint>
#include <QRect>
#include <QSettings>
#include <fuzzer/FuzzedDataProvider.h>

static QString text(FuzzedDataProvider &data)
{
    const std::string bytes = data.ConsumeRandomLengthString(24);
    const QString text = data.ConsumeBool()
        ? QString::fromStdString(bytes)
        : QString(reinterpret_cast<const QChar *>(bytes.data()), int(bytes.size() / 2));
    // QSettings of Qt 6 loses half a character, and byte-order marks here and there.
    return QT_VERSION_MAJOR >= 6 ? QString::fromUtf8(text.toUtf8()).remove(QChar::ByteOrderMark) : text;
}

static QVariant value(FuzzedDataProvider &data)
{
    const QString one = text(data), other = text(data);
    const auto number = data.ConsumeIntegral<qlonglong>();
    const int small = static_cast<short>(number);
    const QVariant values[] = {number,
                               number > 0,
                               one.toUtf8(),
                               QPoint(small, -small),
                               QRect(0, 1, 2, small),
                               data.ConsumeFloatingPoint<double>(),
                               QVariant(),
                               QStringList{one, other},
                               QVariantList{one, small, other.toLatin1()},
                               one};
    return data.PickValueInArray(values);
}

/// Values that a QSettings writes are read as it reads them, and the other way round.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/ini-fuzz"));
    static int number = 0;
    FuzzedDataProvider data(bytes, size);
    const QString path = folder.filePath(QString::number(++number));
    ini::Changes changes;
    {
        QSettings settings(path, QSettings::IniFormat);
        while (data.remaining_bytes() > 0) {
            const QString key = ini::normalized(data.ConsumeBool() ? text(data) : QStringLiteral("s/k"));
            const QVariant written = value(data);
            // "[general]" is the general section, whatever its case: QSettings loses that of a section called so.
            if (key.isEmpty() || key.startsWith(QLatin1String("general/"), Qt::CaseInsensitive))
                continue;
            settings.setValue(key, written);
            changes[key] = ini::stored(written).value();
        }
    }
    QFile written(path);
    const ini::Content content(written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray());
    QFile::rename(path, path + "a");
    const QByteArray ours = ini::Content().with(changes);
    writeFile(path + "b", ours.data(), static_cast<std::size_t>(ours.size()));

    // Files that were not there before: a process remembers what it read.
    const QSettings theirs(path + "a", QSettings::IniFormat), again(path + "b", QSettings::IniFormat);
    for (const QString &key : changes.keys()) {
        const QVariant expected = theirs.value(key, "absent");
        for (const QVariant &found : {content.value(key, "absent"), again.value(key, "absent")})
            require(found == expected || found.toString() == expected.toString()); // or two numbers that are none
    }
    QFile::remove(path + "a");
    QFile::remove(path + "b");
    return 0;
}
