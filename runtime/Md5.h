#pragma once

#include "config/Export.h"

#include <cstdint>

/// The MD5 message digest (RFC 1321) of input that comes in pieces.
///
/// Feed the pieces with md5_update(), then take the digest with md5_finish(), once: the object is spent afterwards. Any
/// length of input will do; past 2^61 bytes its length counts modulo 2^64 bits, as the RFC has it. Not for keeping
/// secrets or detecting tampering: MD5 collides on demand. An object belongs to one thread at a time.
class ONDPDFTOOLUTILS_EXPORT Md5
{
public:
    Md5();
    virtual ~Md5();

    /// Feeds `length` bytes. They are only read. Nothing is read for a length of 0.
    void md5_update(unsigned char *data, unsigned long length);

    /// Writes the digest of all input, 16 bytes, to `out`.
    void md5_finish(unsigned char *out);

    /// Compresses one block of 64 bytes into the chaining words, and counts no input: what md5_update() is made of.
    void md5_process(unsigned char *block);

protected:
    /// Bytes of input so far: the lower 32 bits, then all above them.
    std::uint64_t m_count[2] = {0, 0};
    /// The chaining words A, B, C and D, of 32 bits each.
    std::uint64_t m_chain[4];
    /// The input since the last whole block.
    unsigned char m_buffer[64];
};
