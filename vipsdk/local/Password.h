#pragma once

#include <QJsonObject>
#include <QString>

namespace local_sdk {

/// What is kept of a password: its PBKDF2 digest (RFC 8018, HMAC-SHA-256), the salt and the number of iterations.
[[nodiscard]] QJsonObject digestOfPassword(const QString &password);

/// Whether a digest is that of `password`.
[[nodiscard]] bool isPassword(const QJsonObject &stored, const QString &password);

/// A random text of `bytes` bytes, in hexadecimal digits.
[[nodiscard]] QString randomText(int bytes);

} // namespace local_sdk
