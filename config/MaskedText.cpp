#include "config/MaskedText_p.h"

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

std::string joined(View first, View second)
{
    char plain[2 * kMaxBlocks * kBlockSize];
    unmask(first.m_blocks, first.m_length / kBlockSize + 1, plain);
    unmask(second.m_blocks, second.m_length / kBlockSize + 1, plain + first.m_length);
    return {plain, first.m_length + second.m_length};
}

} // namespace masked
