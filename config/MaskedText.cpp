#include "config/MaskedText_p.h"

#include <QString>

namespace masked {

namespace {

constexpr std::size_t kMaxSize = kMaxBlocks * kBlockSize;

void unmask(const unsigned char *blocks, std::size_t count, char *plain)
{
    for (; count > 0; --count, blocks += kBlockSize, plain += kBlockSize)
        for (std::size_t i = 0; i < kBlockSize; ++i)
            plain[i] = static_cast<char>(blocks[i] ^ kMask[i]);
}

} // namespace

std::string View::str() const
{
    char plain[kMaxSize];
    unmask(m_blocks, m_length / kBlockSize + 1, plain);
    return {plain, m_length};
}

std::wstring View::wstr() const
{
    char plain[kMaxSize];
    unmask(m_blocks, m_length / kBlockSize + 1, plain);
    if (m_isAscii)
        return {plain, plain + m_length};
    return QString::fromUtf8(plain, static_cast<int>(m_length)).toStdWString();
}

std::string joined(View first, View second)
{
    char plain[2 * kMaxSize];
    unmask(first.m_blocks, first.m_length / kBlockSize + 1, plain);
    unmask(second.m_blocks, second.m_length / kBlockSize + 1, plain + first.m_length);
    return {plain, first.m_length + second.m_length};
}

} // namespace masked
