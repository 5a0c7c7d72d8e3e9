#include "config/MaskedText.h"

#include <QString>
#include <cstdint>
#include <cstring>

namespace masked {

void unmask(const unsigned char *blocks, std::size_t count, char *plain)
{
    std::uint64_t mask[2];
    std::memcpy(mask, kMask, kBlockSize);
    for (std::size_t i = 0; i < count; ++i) {
        std::uint64_t block[2];
        std::memcpy(block, blocks + i * kBlockSize, kBlockSize);
        block[0] ^= mask[0];
        block[1] ^= mask[1];
        std::memcpy(plain + i * kBlockSize, block, kBlockSize);
    }
}

std::wstring widened(const char *text, std::size_t length)
{
    return QString::fromUtf8(text, static_cast<int>(length)).toStdWString();
}

} // namespace masked
