#include "runtime/Md5.h"

#include <QtEndian>
#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

using Word = std::uint32_t;

constexpr std::size_t kBlockSize = 64;

constexpr Word kSines[64] = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501, //
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821, //
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8, //
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a, //
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70, //
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665, //
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1, //
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391,
};

constexpr Word rotated(Word value, int bits)
{
    return (value << bits) | (value >> (32 - bits));
}

/// A round: the order in which it takes the words of the block, how far it turns, and its part of the sines.
struct Round
{
    std::size_t first, stride;
    int rotations[4];
    const Word *sines;
};

constexpr Round kRoundF = {0, 1, {7, 12, 17, 22}, kSines};
constexpr Round kRoundG = {1, 5, {5, 9, 14, 20}, kSines + 16};
constexpr Round kRoundH = {5, 3, {4, 11, 16, 23}, kSines + 32};
constexpr Round kRoundI = {0, 7, {6, 10, 15, 21}, kSines + 48};

struct Chain
{
    Word a, b, c, d;
};

/// Sixteen steps. `add` adds the round's function of three words to a sum; the first of the three is the newest, and
/// what is added before it is needed costs no time.
template <typename Add> Q_ALWAYS_INLINE Chain run(const Round &round, Chain chain, const Word (&block)[16], Add add)
{
    auto [a, b, c, d] = chain;
#pragma GCC unroll 16
    for (std::size_t i = 0; i < 16; ++i) {
        const Word sum = a + block[(round.first + i * round.stride) % 16] + round.sines[i];
        const Word next = b + rotated(add(sum, b, c, d), round.rotations[i % 4]);
        a = d;
        d = c;
        c = b;
        b = next;
    }
    return {a, b, c, d};
}

} // namespace

Md5::Md5() : m_chain{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476} { }

Md5::~Md5() = default;

void Md5::md5_update(unsigned char *data, unsigned long length)
{
    if (length == 0)
        return;
    const std::size_t buffered = m_count[0] % kBlockSize;
    m_count[0] += length;
    m_count[1] += m_count[0] >> 32;
    m_count[0] &= 0xffffffff;

    if (buffered > 0) {
        const std::size_t missing = std::min<std::size_t>(kBlockSize - buffered, length);
        std::memcpy(m_buffer + buffered, data, missing);
        data += missing;
        length -= missing;
        if (buffered + missing < kBlockSize)
            return;
        md5_process(m_buffer);
    }
    for (; length >= kBlockSize; data += kBlockSize, length -= kBlockSize)
        md5_process(data);
    std::memcpy(m_buffer, data, length);
}

void Md5::md5_finish(unsigned char *out)
{
    constexpr std::size_t lengthSize = 8;
    const quint64 bits = (m_count[1] << 35) | (m_count[0] << 3);
    // To 8 bytes short of a whole block, and at least one byte.
    const std::size_t size = kBlockSize - (m_count[0] + lengthSize) % kBlockSize;

    unsigned char padding[kBlockSize + lengthSize] = {0x80};
    qToLittleEndian<quint64>(bits, padding + size);
    md5_update(padding, size + lengthSize);
    for (std::size_t i = 0; i < 4; ++i)
        qToLittleEndian<Word>(static_cast<Word>(m_chain[i]), out + 4 * i);
}

void Md5::md5_process(unsigned char *block)
{
    Word words[16];
    qFromLittleEndian<Word>(block, 16, words);
    const Chain before = {static_cast<Word>(m_chain[0]), static_cast<Word>(m_chain[1]), static_cast<Word>(m_chain[2]),
                          static_cast<Word>(m_chain[3])};
    Chain chain = before;
    chain = run(kRoundF, chain, words, [](Word sum, Word x, Word y, Word z) { return sum + (z ^ (x & (y ^ z))); });
    chain = run(kRoundG, chain, words, [](Word sum, Word x, Word y, Word z) { return sum + (y & ~z) + (x & z); });
    chain = run(kRoundH, chain, words, [](Word sum, Word x, Word y, Word z) { return sum + (x ^ y ^ z); });
    chain = run(kRoundI, chain, words, [](Word sum, Word x, Word y, Word z) { return sum + (y ^ (x | ~z)); });
    m_chain[0] = before.a + chain.a;
    m_chain[1] = before.b + chain.b;
    m_chain[2] = before.c + chain.c;
    m_chain[3] = before.d + chain.d;
}
