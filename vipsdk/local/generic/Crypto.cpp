#include "vipsdk/local/Crypto.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

namespace local_sdk {

QByteArray pbkdf2(const QByteArray &password, const QByteArray &salt, int rounds, int size)
{
    // Nothing of it is taken away at exit, when a login may still be under way on another thread.
    static const bool isReady = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr) == 1;
    QByteArray key(size, '\0');
    const bool done = isReady
        && PKCS5_PBKDF2_HMAC(password.constData(), static_cast<int>(password.size()),
                             reinterpret_cast<const unsigned char *>(salt.constData()), static_cast<int>(salt.size()),
                             rounds, EVP_sha256(), size, reinterpret_cast<unsigned char *>(key.data()))
            == 1;
    return done ? key : QByteArray();
}

bool isSame(const QByteArray &a, const QByteArray &b)
{
    return a.size() == b.size() && CRYPTO_memcmp(a.constData(), b.constData(), static_cast<std::size_t>(a.size())) == 0;
}

void wipe(void *bytes, std::size_t size)
{
    OPENSSL_cleanse(bytes, size);
}

} // namespace local_sdk
