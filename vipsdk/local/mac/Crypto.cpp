#define __STDC_WANT_LIB_EXT1__ 1 // memset_s

#include "vipsdk/local/Crypto.h"

#include <CommonCrypto/CommonCryptoError.h>
#include <CommonCrypto/CommonKeyDerivation.h>
#include <string.h>

namespace local_sdk {

QByteArray pbkdf2(const QByteArray &password, const QByteArray &salt, int rounds, int size)
{
    QByteArray key(size, '\0');
    const int status = CCKeyDerivationPBKDF(
        kCCPBKDF2, password.constData(), static_cast<size_t>(password.size()),
        reinterpret_cast<const uint8_t *>(salt.constData()), static_cast<size_t>(salt.size()), kCCPRFHmacAlgSHA256,
        static_cast<unsigned>(rounds), reinterpret_cast<uint8_t *>(key.data()), static_cast<size_t>(key.size()));
    return status == kCCSuccess ? key : QByteArray();
}

bool isSame(const QByteArray &a, const QByteArray &b)
{
    return a.size() == b.size() && timingsafe_bcmp(a.constData(), b.constData(), static_cast<size_t>(a.size())) == 0;
}

void wipe(void *bytes, std::size_t size)
{
    memset_s(bytes, size, 0, size);
}

} // namespace local_sdk
