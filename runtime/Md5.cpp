#include "runtime/Md5.h"

#include <QtEndian>
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

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

/// Keeps the compiler from reordering the additions around this value. All but the newest word are known early: what
/// is added before that one arrives costs no time, and only this order leaves a step as short as it can be.
Q_ALWAYS_INLINE Word pinned(Word value)
{
    asm("" : "+r"(value));
    return value;
}

Q_ALWAYS_INLINE Word rotated(Word value, int bits)
{
    return (value << bits) | (value >> (32 - bits));
}

// A round: in which order it takes the words of the block, how far it rotates, and what it adds to a sum. `x` is the
// newest word in each.

struct RoundF
{
    static constexpr std::size_t first = 0, stride = 1;
    static constexpr int rotations[4] = {7, 12, 17, 22};
    static Q_ALWAYS_INLINE Word add(Word sum, Word x, Word y, Word z) { return sum + (z ^ (x & (y ^ z))); }
};

struct RoundG
{
    static constexpr std::size_t first = 1, stride = 5;
    static constexpr int rotations[4] = {5, 9, 14, 20};
    // The halves have no bit in common, so that they may be added one by one instead of or-ed.
    static Q_ALWAYS_INLINE Word add(Word sum, Word x, Word y, Word z) { return pinned(sum + (y & ~z)) + (x & z); }
};

struct RoundH
{
    static constexpr std::size_t first = 5, stride = 3;
    static constexpr int rotations[4] = {4, 11, 16, 23};
    static Q_ALWAYS_INLINE Word add(Word sum, Word x, Word y, Word z) { return sum + (x ^ pinned(y ^ z)); }
};

struct RoundI
{
    static constexpr std::size_t first = 0, stride = 7;
    static constexpr int rotations[4] = {6, 10, 15, 21};
    static Q_ALWAYS_INLINE Word add(Word sum, Word x, Word y, Word z) { return sum + (y ^ (x | ~z)); }
};

/// Step `i` of a round. The words change places from step to step: A, B, C, D is followed by D, A, B, C.
template <typename Round, std::size_t number, std::size_t i>
Q_ALWAYS_INLINE void step(Word (&chain)[4], const unsigned char *block)
{
    constexpr std::size_t a = (16 - i) % 4;
    const Word b = chain[(a + 1) % 4];
    const auto word = qFromLittleEndian<Word>(block + sizeof(Word) * ((Round::first + i * Round::stride) % 16));
    const Word sum = pinned(chain[a] + word + kSines[16 * number + i]);
    chain[a] = b + rotated(Round::add(sum, b, chain[(a + 2) % 4], chain[(a + 3) % 4]), Round::rotations[i % 4]);
}

template <typename Round, std::size_t number, std::size_t... i>
Q_ALWAYS_INLINE void run(Word (&chain)[4], const unsigned char *block, std::index_sequence<i...>)
{
    (step<Round, number, i>(chain, block), ...);
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
    constexpr auto steps = std::make_index_sequence<16>();
    Word chain[4] = {static_cast<Word>(m_chain[0]), static_cast<Word>(m_chain[1]), static_cast<Word>(m_chain[2]),
                     static_cast<Word>(m_chain[3])};
    run<RoundF, 0>(chain, block, steps);
    run<RoundG, 1>(chain, block, steps);
    run<RoundH, 2>(chain, block, steps);
    run<RoundI, 3>(chain, block, steps);
    // Pinned, else done with vector instructions, which keep the next block waiting longer; and no loop, for which the
    // words would have to lie in memory.
    m_chain[0] = pinned(static_cast<Word>(m_chain[0]) + chain[0]);
    m_chain[1] = pinned(static_cast<Word>(m_chain[1]) + chain[1]);
    m_chain[2] = pinned(static_cast<Word>(m_chain[2]) + chain[2]);
    m_chain[3] = pinned(static_cast<Word>(m_chain[3]) + chain[3]);
}
