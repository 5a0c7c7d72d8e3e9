#pragma once

#import <Foundation/Foundation.h>
#include <vector>

/// Bytes across the language border. Call inside an autorelease pool.
namespace platform::mac {

/// Empty for nil.
inline std::vector<unsigned char> toBytes(NSData *data)
{
    const auto *bytes = static_cast<const unsigned char *>([data bytes]);
    return bytes ? std::vector<unsigned char>(bytes, bytes + [data length]) : std::vector<unsigned char>();
}

inline NSData *toNSData(const std::vector<unsigned char> &bytes)
{
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

} // namespace platform::mac
