#include "config/InstallationId_p.h"

#include "runtime/OndEasyMd5.h"

#include <QByteArray>
#include <cstdint>
#include <cstdio>

namespace installation_id {

namespace {

constexpr QLatin1Char kZero('0');

} // namespace

QString randomPiece(int number)
{
    // The marker is "%05"; the letters behind it stay, as in the ids that exist.
    return QStringLiteral("%05ld").arg(number, 5, 10, kZero);
}

QString uuidPiece(const QUuid &uuid)
{
    const std::uint64_t fields =
        std::uint64_t{uuid.data1} | std::uint64_t{uuid.data2} << 32U | std::uint64_t{uuid.data3} << 48U;
    const unsigned char *rest = uuid.data4;
    char text[64];
    // The "x" among the "X" is part of the ids that exist.
    std::snprintf(text, sizeof text, "%08lX%04X%04x%02X%02X%02X%02X%02X%02X%02X%02X",
                  static_cast<unsigned long>(fields), uuid.data2, uuid.data3, rest[0], rest[1], rest[2], rest[3],
                  rest[4], rest[5], rest[6], rest[7]);
    return QString::fromLatin1(text);
}

QString timePiece(const QDateTime &time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    return QStringLiteral("%1%2%3%4%5%6%7")
        .arg(clock.msec(), 3, 10, kZero)
        .arg(clock.minute(), 2, 10, kZero)
        .arg(date.day(), 2, 10, kZero)
        .arg(date.year(), 4, 10, kZero)
        .arg(clock.hour(), 2, 10, kZero)
        .arg(clock.second(), 2, 10, kZero)
        .arg(date.month(), 2, 10, kZero);
}

QString hostPiece(const QString &hostName)
{
    return digest(hostName);
}

QString diskPiece(qint64 freeBytes)
{
    return QStringLiteral("%1").arg(freeBytes, 10, 10, kZero);
}

QString digest(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    const OndEasyMd5 md5(reinterpret_cast<const unsigned char *>(utf8.constData()), utf8.size());
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(md5.GetBinary16()), 16).toHex());
}

} // namespace installation_id
