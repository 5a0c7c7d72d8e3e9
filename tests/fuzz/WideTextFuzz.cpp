#include "runtime/CommonFileLog.h"
#include "tests/fuzz/Target.h"

#include <stdexcept>

/// Wide texts have the UTF-8 that Qt makes of them, or are refused for what is no character.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::wstring text = L"a"; // Qt takes a byte-order mark off the front
    bool isText = true;
    for (std::size_t i = 0; i + 3 <= size; i += 3) { // the first byte chooses how large a number may be
        const unsigned int value = (data[i] << 16U | data[i + 1] << 8U | data[i + 2]) >> (data[i] % 4 * 5);
        text += static_cast<wchar_t>(value);
        isText = isText && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    }
    try {
        const std::string bytes = CommonFileLog::wstringToString(text);
        require(isText && bytes == QString::fromStdWString(text).toStdString());
    } catch (const std::range_error &) {
        require(!isText);
    }
    return 0;
}
