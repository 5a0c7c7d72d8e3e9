#pragma once

#include <string>

namespace bench {

inline constexpr char kLiteral[] = "https://service.vantpdf.example/api/v2/account/log";
inline constexpr wchar_t kWideLiteral[] = L"https://service.vantpdf.example/api/v2/account/log";
static_assert(sizeof kLiteral == 51, "50 characters and the NUL");

/// The literal as a text, from a function that the caller's compiler does not see into.
std::string literal();
std::wstring wideLiteral();

} // namespace bench
