#include "config/MaskedText.h"

#include <QString>
#include <cstring>

namespace masked {

namespace {

/// The plain text of a masked one, for as long as this object stands on the stack.
class Unmasked
{
public:
    Unmasked(const unsigned char *blocks, std::size_t length) : m_length(length)
    {
        std::uint64_t mask[2];
        std::memcpy(mask, kMask, kBlockSize);
        for (std::size_t at = 0; at < length; at += kBlockSize) {
            std::uint64_t block[2];
            std::memcpy(block, blocks + at, kBlockSize);
            block[0] ^= mask[0];
            block[1] ^= mask[1];
            std::memcpy(m_bytes + at, block, kBlockSize);
        }
    }

    [[nodiscard]] const char *begin() const { return m_bytes; }
    [[nodiscard]] const char *end() const { return m_bytes + m_length; }
    [[nodiscard]] std::size_t size() const { return m_length; }

private:
    char m_bytes[kMaxBlocks * kBlockSize];
    std::size_t m_length;
};

} // namespace

// Not inline: next to a constant the compiler would undo the mask and store the plain text.
std::string View::str() const
{
    const Unmasked plain(m_blocks, m_length);
    return {plain.begin(), plain.size()};
}

std::wstring View::wstr() const
{
    const Unmasked plain(m_blocks, m_length);
    if (m_ascii)
        return {plain.begin(), plain.end()};
    return QString::fromUtf8(plain.begin(), static_cast<int>(plain.size())).toStdWString();
}

} // namespace masked
