#include "vipsdk/local/Password.h"

#include "vipsdk/local/Crypto.h"

#include <QRandomGenerator>

namespace local_sdk {

namespace {

#ifdef OND_PASSWORD_ROUNDS
constexpr int kRounds = OND_PASSWORD_ROUNDS;
#else
// What OWASP's Password Storage Cheat Sheet asks of PBKDF2-HMAC-SHA-256.
constexpr int kRounds = 600'000;
#endif
/// A hostile file must not keep a login busy for long.
constexpr int kMaxRounds = 4'000'000;
constexpr int kSaltSize = 16;
constexpr int kDigestSize = 32;

/// In place: writing to the text in the usual way would leave the old characters behind when it is shared.
void wipeText(const QString &text)
{
    wipe(const_cast<QChar *>(text.constData()), static_cast<std::size_t>(text.size()) * sizeof(QChar));
}

QByteArray bytes(const QJsonObject &digest, const char *key)
{
    return QByteArray::fromHex(digest.value(QLatin1String(key)).toString().toLatin1());
}

} // namespace

Password::Password(const wchar_t *text)
{
    const QString typed = text ? QString::fromWCharArray(text) : QString();
    const QString normalized = typed.normalized(QString::NormalizationForm_C);
    m_bytes = normalized.toUtf8();
    wipeText(typed);
    wipeText(normalized);
}

Password::~Password()
{
    wipe(const_cast<char *>(m_bytes.constData()), static_cast<std::size_t>(m_bytes.size()));
}

QJsonObject Password::digest() const
{
    const QString salt = randomText(kSaltSize);
    const QByteArray digest = pbkdf2(m_bytes, QByteArray::fromHex(salt.toLatin1()), kRounds, kDigestSize);
    if (digest.isEmpty())
        return {};
    return {{"salt", salt}, {"iterations", kRounds}, {"digest", QString(digest.toHex())}};
}

bool Password::has(const QJsonObject &digest) const
{
    const QByteArray expected = bytes(digest, "digest");
    const int rounds = digest.value("iterations").toInt();
    return expected.size() == kDigestSize && rounds >= 1 && rounds <= kMaxRounds
        && isSame(pbkdf2(m_bytes, bytes(digest, "salt"), rounds, kDigestSize), expected);
}

bool isOutdated(const QJsonObject &digest)
{
    return digest.value("iterations").toInt() < kRounds;
}

QString randomText(int bytes)
{
    QByteArray random(bytes, '\0');
    for (char &byte : random)
        byte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    return random.toHex();
}

} // namespace local_sdk
