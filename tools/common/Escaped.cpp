#include "tools/common/Escaped.h"

#include <array>
#include <cstdio>

namespace {

std::string coded(const char *format, unsigned code)
{
    std::array<char, 8> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), format, code));
    return text.data();
}

/// The control character (ISO 6429, C0 and C1, and DEL) that begins at `text[i]`, in UTF-8; -1 for any other.
int controlAt(const std::string &text, std::size_t i)
{
    const auto byte = [&text](std::size_t at) { return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U; };
    if (byte(i) < 0x20 || byte(i) == 0x7F)
        return static_cast<int>(byte(i));
    return byte(i) == 0xC2 && byte(i + 1) >= 0x80 && byte(i + 1) < 0xA0 ? static_cast<int>(byte(i + 1)) : -1;
}

template <typename Code> std::string withCodes(const std::string &text, Code code)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int control = controlAt(text, i);
        result += control < 0 ? std::string(1, text[i]) : code(static_cast<unsigned>(control));
        i += control >= 0x80 ? 1 : 0;
    }
    return result;
}

} // namespace

std::string escaped(const std::string &text)
{
    return withCodes(text, [](unsigned control) {
        return control == '\n' ? "\\n" : control == '\t' ? "\\t" : coded("\\x%02x", control);
    });
}

std::string escapedJson(const std::string &json)
{
    // The serialiser has escaped C0 itself; what is left of it lies between the texts.
    return withCodes(json, [](unsigned control) {
        return control < 0x20 ? std::string(1, char(control)) : coded("\\u%04x", control);
    });
}
