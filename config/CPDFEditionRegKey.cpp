#include "config/CPDFEditionRegKey.h"

// clang-format off
CPDFEditionRegKey::CPDFEditionRegKey(bool) { }
CPDFEditionRegKey::CPDFEditionRegKey(PDFEdition::EDITION, bool) { }

long CPDFEditionRegKey::Create(const wchar_t *) { return 0; }
long CPDFEditionRegKey::Open(const wchar_t *) { return 0; }
long CPDFEditionRegKey::SetDWORDValue(const wchar_t *, std::uint32_t) { return 0; }
long CPDFEditionRegKey::SetQWORDValue(const wchar_t *, std::uint64_t) { return 0; }
long CPDFEditionRegKey::SetStringValue(const wchar_t *, const wchar_t *) { return 0; }
long CPDFEditionRegKey::QueryDWORDValue(const wchar_t *, std::uint32_t &) { return 0; }
long CPDFEditionRegKey::QueryQWORDValue(const wchar_t *, std::uint64_t &) { return 0; }
long CPDFEditionRegKey::QueryStringValue(const wchar_t *, wchar_t *, std::uint32_t *) { return 0; }
long CPDFEditionRegKey::QueryStringValue(const wchar_t *, std::wstring &) { return 0; }
long CPDFEditionRegKey::QueryMultiStringValue(const wchar_t *, wchar_t *, std::uint32_t *) { return 0; }
long CPDFEditionRegKey::DeleteValue(const wchar_t *) { return 0; }
// clang-format on
