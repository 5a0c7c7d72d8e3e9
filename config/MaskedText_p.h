#pragma once

#include <cstddef>
#include <string>

/// Texts of the product build that must not be readable in the built library.
///
/// A text is masked while compiling: padded with NUL to whole blocks of 16 bytes, each XOR-ed with one fixed mask.
/// The plain text never reaches the object file: `str()` and `wstr()` make it in a stack buffer.
namespace masked {

inline constexpr std::size_t kBlockSize = 16;
inline constexpr std::size_t kMaxBlocks = 32;
inline constexpr unsigned char kMask[kBlockSize] = {0xa7, 0x3c, 0xd1, 0x8e, 0x95, 0xf2, 0xb8, 0xc4,
                                                    0xe9, 0x9b, 0xad, 0x86, 0xfa, 0xcb, 0x90, 0xdf};

/// A masked text wherever it lies; what tables hold. Its functions are never inline: next to a constant the compiler
/// would undo the mask and store the plain text.
class View
{
public:
    constexpr View(const unsigned char *blocks, std::size_t length, bool isAscii)
        : m_blocks(blocks), m_length(length), m_isAscii(isAscii)
    {
    }

    /// The plain text, UTF-8.
    [[nodiscard]] std::string str() const;
    /// The plain text, UTF-32.
    [[nodiscard]] std::wstring wstr() const;

    /// The plain texts of both, one after the other, UTF-8.
    friend std::string joined(View first, View second);

private:
    const unsigned char *m_blocks;
    std::size_t m_length;
    bool m_isAscii;
};

std::string joined(View first, View second);

template <std::size_t Length> class Text
{
public:
    constexpr explicit Text(const char (&text)[Length + 1])
    {
        for (std::size_t i = 0; i < kSize; ++i) {
            const auto byte = static_cast<unsigned char>(i < Length ? text[i] : '\0');
            m_bytes[i] = static_cast<unsigned char>(byte ^ kMask[i % kBlockSize]);
            m_isAscii = m_isAscii && byte < 0x80;
        }
    }

    /// Bytes of the plain text.
    [[nodiscard]] constexpr std::size_t size() const { return Length; }
    [[nodiscard]] constexpr View view() const { return {m_bytes, Length, m_isAscii}; }
    constexpr operator View() const { return view(); }
    [[nodiscard]] std::string str() const { return view().str(); }
    [[nodiscard]] std::wstring wstr() const { return view().wstr(); }

private:
    static constexpr std::size_t kBlocks = Length / kBlockSize + 1;
    static constexpr std::size_t kSize = kBlocks * kBlockSize;
    static_assert(kBlocks <= kMaxBlocks, "longer than a stack buffer should be");

    unsigned char m_bytes[kSize] = {};
    bool m_isAscii = true;
};

/// Masks a literal. Use it to initialise a `constexpr` object only, else the literal stays in the program.
template <std::size_t Size> constexpr Text<Size - 1> text(const char (&literal)[Size])
{
    return Text<Size - 1>(literal);
}

} // namespace masked
