#pragma once

#include <QByteArray>

namespace local_sdk {

/// `size` bytes of PBKDF2 with HMAC-SHA-256 (RFC 8018), from the system's library; none when that fails.
[[nodiscard]] QByteArray pbkdf2(const QByteArray &password, const QByteArray &salt, int rounds, int size);

/// Compares in a time that depends on the sizes only.
[[nodiscard]] bool isSame(const QByteArray &a, const QByteArray &b);

/// Overwrites memory that nobody reads again.
void wipe(void *bytes, std::size_t size);

} // namespace local_sdk
