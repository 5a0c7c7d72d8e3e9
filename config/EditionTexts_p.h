#pragma once

#include "config/MaskedText_p.h"

#include <tuple>

namespace masked {

/// What the columns of a table of texts stand for, in this order.
enum class Edition { domestic, international, internationalTest };

/// One row of such a table: a text of the product build, masked, for each edition.
template <std::size_t... Lengths> class EditionTexts
{
public:
    static constexpr std::size_t kColumns = sizeof...(Lengths);

    constexpr explicit EditionTexts(const char (&...texts)[Lengths + 1]) : m_texts(Text<Lengths>(texts)...) { }

    /// The text for `edition`. A row that ends early has its last text for the editions left out.
    [[nodiscard]] constexpr View operator[](Edition edition) const
    {
        return pick(edition, [](const auto &text) { return text.view(); });
    }
    [[nodiscard]] std::string str(Edition edition) const
    {
        return pick(edition, [](const auto &text) { return text.str(); });
    }
    [[nodiscard]] std::wstring wstr(Edition edition) const
    {
        return pick(edition, [](const auto &text) { return text.wstr(); });
    }

private:
    static_assert(sizeof...(Lengths) >= 1 && sizeof...(Lengths) <= 3, "a row has one to three texts");

    template <std::size_t Column = 0, typename Use> constexpr auto pick(Edition edition, Use use) const
    {
        if constexpr (Column + 1 < sizeof...(Lengths)) {
            if (static_cast<std::size_t>(edition) > Column)
                return pick<Column + 1>(edition, use);
        }
        return use(std::get<Column>(m_texts));
    }

    std::tuple<Text<Lengths>...> m_texts;
};

/// Masks the literals of a row. Use it as text(): to initialise a `constexpr` object only.
template <std::size_t... Sizes> constexpr EditionTexts<(Sizes - 1)...> byEdition(const char (&...literals)[Sizes])
{
    return EditionTexts<(Sizes - 1)...>(literals...);
}

} // namespace masked
