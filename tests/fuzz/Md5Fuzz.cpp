#include "runtime/Md5.h"
#include "tests/fuzz/Target.h"

#include <algorithm>
#include <openssl/evp.h>
#include <vector>

/// However the input is split, the digest is OpenSSL's. The first bytes say how long the pieces are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::vector<unsigned char> bytes(data, data + size);
    Md5 md5;
    for (std::size_t at = 0, piece = 0; at < size; ++piece) {
        const std::size_t length = std::min<std::size_t>(bytes[piece % size], size - at);
        md5.md5_update(bytes.data() + at, length == 0 ? 1 : length);
        at += length == 0 ? 1 : length;
    }
    unsigned char ours[16], theirs[EVP_MAX_MD_SIZE];
    md5.md5_finish(ours);
    require(EVP_Digest(data, size, theirs, nullptr, EVP_md5(), nullptr) == 1 && std::equal(ours, ours + 16, theirs));
    return 0;
}
