#pragma once

#include <QJsonObject>
#include <QString>

namespace local_sdk {

/// A password as it is digested: the same bytes however an accent was typed. They are overwritten when it goes.
class Password
{
public:
    /// Null is an empty text.
    explicit Password(const wchar_t *text);
    ~Password();
    Password(const Password &) = delete;
    Password &operator=(const Password &) = delete;

    [[nodiscard]] bool isEmpty() const { return m_bytes.isEmpty(); }

    /// What is kept of it: its PBKDF2 digest with the salt and the number of rounds. Empty when that fails. Takes a
    /// while.
    [[nodiscard]] QJsonObject digest() const;
    /// Whether a digest is that of this password. Takes as long as its rounds do.
    [[nodiscard]] bool has(const QJsonObject &digest) const;

private:
    QByteArray m_bytes;
};

/// Whether a digest has fewer rounds than digest() would give it now.
[[nodiscard]] bool isOutdated(const QJsonObject &digest);

/// A random text of `bytes` bytes, in hexadecimal digits.
[[nodiscard]] QString randomText(int bytes);

} // namespace local_sdk
