#pragma once

#import <Foundation/Foundation.h>
#include <string>

/// Texts across the language border. Call inside an autorelease pool.
namespace platform::mac {

/// UTF-8 of a text; empty for nil and for a text that has none.
inline std::string toUtf8(NSString *text)
{
    const char *bytes = [text UTF8String];
    return bytes ? bytes : "";
}

/// Nil when the bytes are not UTF-8, or hold a NUL, at which a path would end.
inline NSString *toNSString(const std::string &text)
{
    if (text.find('\0') != std::string::npos)
        return nil;
    return [NSString stringWithUTF8String:text.c_str()];
}

} // namespace platform::mac
