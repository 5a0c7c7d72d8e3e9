#include "vipsdk/local/Password.h"

#include <QPasswordDigestor>
#include <QRandomGenerator>

namespace local_sdk {

namespace {

constexpr int kIterations = 100'000;
/// A hostile file must not keep a login busy for long.
constexpr int kMaxIterations = 1'000'000;
constexpr int kSaltSize = 16;
constexpr int kDigestSize = 32;

QByteArray digest(const QString &password, const QByteArray &salt, int iterations)
{
    // However an accent was typed, it is the same password.
    const QByteArray bytes = password.normalized(QString::NormalizationForm_C).toUtf8();
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, bytes, salt, iterations, kDigestSize);
}

} // namespace

QJsonObject digestOfPassword(const QString &password)
{
    const QString salt = randomText(kSaltSize);
    return {{"salt", salt},
            {"iterations", kIterations},
            {"digest", QString(digest(password, QByteArray::fromHex(salt.toLatin1()), kIterations).toHex())}};
}

bool isPassword(const QJsonObject &stored, const QString &password)
{
    const auto bytes = [&stored](const char *key) {
        return QByteArray::fromHex(stored.value(QLatin1String(key)).toString().toLatin1());
    };
    const QByteArray expected = bytes("digest");
    const int iterations = stored.value("iterations").toInt();
    if (expected.size() != kDigestSize || iterations < 1 || iterations > kMaxIterations)
        return false;
    return digest(password, bytes("salt"), iterations) == expected;
}

QString randomText(int bytes)
{
    QByteArray random(bytes, '\0');
    for (char &byte : random)
        byte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    return random.toHex();
}

} // namespace local_sdk
