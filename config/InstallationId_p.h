#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

/// The pieces of the text whose digest is a new installation id, in their order.
namespace installation_id {

/// A random number in decimal, padded with zeros to five digits, and "ld".
[[nodiscard]] QString randomPiece(int number);
/// Fields 3, 2 and 1 as one upper-case hexadecimal number of at least eight digits, then field 2 in four upper-case
/// digits, field 3 in four lower-case ones, and the last eight bytes in upper case.
[[nodiscard]] QString uuidPiece(const QUuid &uuid);
/// Milliseconds (3 digits), minute, day, year (4), hour, second and month, two digits each where no other number
/// stands.
[[nodiscard]] QString timePiece(const QDateTime &time);
/// The MD5 of the name's UTF-8, 32 lower-case hexadecimal digits.
[[nodiscard]] QString hostPiece(const QString &hostName);
/// Free bytes in decimal, padded with zeros to ten digits. A volume that does not tell has -1.
[[nodiscard]] QString diskPiece(qint64 freeBytes);

/// Digest of the pieces' text, 32 lower-case hexadecimal digits.
[[nodiscard]] QString digest(const QString &text);

} // namespace installation_id
