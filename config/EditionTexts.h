#pragma once

#include "config/MaskedText.h"

#include <algorithm>
#include <tuple>

namespace masked {

/// What the columns of a table of texts stand for, in this order.
enum class Edition { domestic, international, internationalTest };

/// One row of such a table: a text of the product build, masked, for each edition.
template <std::size_t... Lengths> class EditionTexts
{
public:
    constexpr explicit EditionTexts(const char (&...texts)[Lengths + 1]) : m_texts(Text<Lengths>(texts)...) { }

    /// The text for `edition`. A row that ends early has its last text for the editions left out.
    [[nodiscard]] constexpr View operator[](Edition edition) const
    {
        const auto pick = [edition](const auto &...text) {
            const View views[] = {text.view()...};
            return views[std::min(static_cast<std::size_t>(edition), sizeof...(text) - 1)];
        };
        return std::apply(pick, m_texts);
    }

private:
    static_assert(sizeof...(Lengths) >= 1 && sizeof...(Lengths) <= 3, "a row has one to three texts");

    std::tuple<Text<Lengths>...> m_texts;
};

/// Masks the literals of a row. Use it as text(): to initialise a `constexpr` object only.
template <std::size_t... Sizes> constexpr EditionTexts<(Sizes - 1)...> byEdition(const char (&...literals)[Sizes])
{
    return EditionTexts<(Sizes - 1)...>(literals...);
}

} // namespace masked
