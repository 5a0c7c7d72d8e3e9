#include "paths/MacBookmark.h"
#include "tests/fuzz/Target.h"

#include <nlohmann/json.hpp>

/// What is taken is an array of arrays of bytes, and nothing else is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    const auto json = nlohmann::json::parse(text, nullptr, false);
    bool isRight = json.is_array();
    for (std::size_t i = 0; isRight && i < json.size(); ++i) {
        isRight = json[i].is_array();
        for (std::size_t k = 0; isRight && k < json[i].size(); ++k)
            isRight = json[i][k].is_number_integer() && json[i][k] >= 0 && json[i][k] < 256;
    }
    require(!MacBookmark::parseSharedBookmarkJson(text) || isRight);
    return 0;
}
