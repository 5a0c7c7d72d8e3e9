#pragma once

#include "config/Export.h"

#include <QString>

/// The MD5 digest (RFC 1321) of a file or of bytes, as a value of 16 bytes.
///
/// All zero means that there is no digest, which is how a failure shows; no error is raised or logged. An object may be
/// read from several threads.
class ONDPDFTOOLUTILS_EXPORT OndEasyMd5
{
public:
    /// Digests the file at `path` (UTF-32), which is opened by the UTF-8 form of its name and only read.
    ///
    /// No digest for a file that cannot be opened, nor for what is neither a file nor a folder: a pipe, device or
    /// socket might be waited for, or never end, and is not read. Where reading ends early, by an error or because the
    /// file shrinks, the digest is that of the bytes read until then; so a folder, which opens but cannot be read,
    /// gives the digest of empty input.
    explicit OndEasyMd5(const wchar_t *path);

    /// Digests `length` bytes. No digest for a negative length, nor for bytes without an address.
    OndEasyMd5(const unsigned char *data, int length);

    /// Takes the 16 bytes at `digest` as the digest, without hashing them.
    explicit OndEasyMd5(const unsigned char *digest);

    ~OndEasyMd5() = default;

    /// The digest's 16 bytes, which live as long as this object; null without a digest.
    [[nodiscard]] const unsigned char *GetBinary16() const;

    /// The digest as text: two lower-case hexadecimal digits and an "x" for each byte, 48 characters that begin like
    /// "d4x1dx8cx"; empty without a digest. Stored fingerprints have this form.
    [[nodiscard]] QString ToString() const;

private:
    unsigned char m_digest[16] = {};
};
