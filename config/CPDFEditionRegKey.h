#pragma once

#include "config/Export.h"
#include "config/PDFEdition.h"

#include <cstdint>
#include <string>

/// A key of another platform's registry, under an edition's own key, for code that was written for it.
///
/// There is no such registry here (values that are kept per user belong to MacReg): every operation answers 0, which is
/// success, reads and writes nothing, and leaves output arguments as the caller set them.
class ONDPDFTOOLUTILS_EXPORT CPDFEditionRegKey
{
public:
    ///@{

    /// `perUser`: the user's registry rather than the machine's.
    explicit CPDFEditionRegKey(bool perUser);
    CPDFEditionRegKey(PDFEdition::EDITION edition, bool perUser);
    ///@}

    /// @name The key
    ///@{

    /// Returns 0.
    long Create(const wchar_t *subKey = nullptr);
    long Open(const wchar_t *subKey = nullptr);
    ///@}

    /// @name Its values
    ///@{

    /// Returns 0. Outputs are left as the caller set them.
    long SetDWORDValue(const wchar_t *name, std::uint32_t value);
    long SetQWORDValue(const wchar_t *name, std::uint64_t value);
    long SetStringValue(const wchar_t *name, const wchar_t *value);

    long QueryDWORDValue(const wchar_t *name, std::uint32_t &value);
    long QueryQWORDValue(const wchar_t *name, std::uint64_t &value);
    /// Returns 0 and leaves `value` alone. `characters` holds the size of `value`, and would receive that of the text,
    /// its NUL included.
    long QueryStringValue(const wchar_t *name, wchar_t *value, std::uint32_t *characters);
    long QueryStringValue(const wchar_t *name, std::wstring &value);
    long QueryMultiStringValue(const wchar_t *name, wchar_t *value, std::uint32_t *characters);

    long DeleteValue(const wchar_t *name);
    ///@}
};
