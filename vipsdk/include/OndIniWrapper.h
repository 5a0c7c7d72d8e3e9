#pragma once

#include "vipsdk/include/VipSdkExport.h"

#include <memory>
#include <string>

namespace cf_ini {

/// An INI file, read as it stands: a value is everything behind the first "=" of its line without the blanks around it.
/// Quotes, backslashes, braces, commas and semicolons are ordinary characters in it.
///
/// Lines end in LF, CR LF or CR; lines that begin with ";" or "#", and lines that are neither "[section]" nor
/// key=value, are skipped. Names are matched exactly. A section that appears twice is one section, and of a key that
/// appears twice the last one counts; keys above the first section line belong to the section L"". UTF-8, with or
/// without a byte-order mark; a value that is no UTF-8 is read as Latin-1. Texts are UTF-32.
///
/// An object may be read from several threads, but not while it loads. No argument may be null but the path.
class ONDVIPSDK_EXPORT OndIniWrapper
{
public:
    OndIniWrapper();
    ~OndIniWrapper();
    OndIniWrapper(const OndIniWrapper &) = delete;
    OndIniWrapper &operator=(const OndIniWrapper &) = delete;

    /// Reads the file at `path` whole and closes it again, in place of what was loaded before. 0 when there is no
    /// regular file, when it cannot be read, or when it is larger than 16 MiB; then nothing is loaded. `mode` and
    /// `flags` are the SDK's own; applications pass 2 and 0.
    int LoadFile(const wchar_t *path, int mode, int flags);

    /// The value of a key; `defaultValue` when it is absent. A key with nothing behind its "=" has the empty text.
    std::wstring Read(const wchar_t *section, const wchar_t *key, const wchar_t *defaultValue) const;
    /// The value of a key as a decimal integer; 0 when it is none or exceeds an int; `defaultValue` when it is absent.
    int ReadInt(const wchar_t *section, const wchar_t *key, int defaultValue) const;

private:
    struct Content;
    std::unique_ptr<Content> m_content;
};

} // namespace cf_ini
