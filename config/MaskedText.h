#pragma once

#include <cstddef>
#include <cstdint>
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

/// A masked text wherever it lies; what tables hold.
class View
{
public:
    constexpr View(const unsigned char *blocks, std::size_t length, bool ascii)
        : m_blocks(blocks), m_length(static_cast<std::uint16_t>(length)), m_ascii(ascii)
    {
    }

    [[nodiscard]] constexpr std::size_t size() const { return m_length; }
    /// The plain text, UTF-8.
    [[nodiscard]] std::string str() const;
    /// The plain text, UTF-32.
    [[nodiscard]] std::wstring wstr() const;

private:
    const unsigned char *m_blocks;
    std::uint16_t m_length; // bytes, without the NUL
    bool m_ascii;
};

template <std::size_t Length> class Text
{
public:
    constexpr explicit Text(const char (&text)[Length + 1])
    {
        for (std::size_t i = 0; i < kBlocks * kBlockSize; ++i) {
            const auto byte = static_cast<unsigned char>(i < Length ? text[i] : '\0');
            m_bytes[i] = static_cast<unsigned char>(byte ^ kMask[i % kBlockSize]);
            m_ascii = m_ascii && byte < 0x80;
        }
    }

    [[nodiscard]] constexpr View view() const { return {m_bytes, Length, m_ascii}; }
    constexpr operator View() const { return view(); }
    [[nodiscard]] std::string str() const { return view().str(); }
    [[nodiscard]] std::wstring wstr() const { return view().wstr(); }

private:
    static constexpr std::size_t kBlocks = Length / kBlockSize + 1;
    static_assert(kBlocks <= kMaxBlocks, "longer than the stack buffer that it is unmasked into");

    unsigned char m_bytes[kBlocks * kBlockSize] = {};
    bool m_ascii = true;
};

/// Masks a literal. Use it to initialise a `constexpr` object only, else the literal stays in the program.
template <std::size_t Size> constexpr Text<Size - 1> text(const char (&literal)[Size])
{
    return Text<Size - 1>(literal);
}

} // namespace masked
