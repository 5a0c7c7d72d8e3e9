#include "paths/platform/UserDefaults.h"

#include "paths/platform/mac/Data.h"
#include "paths/platform/mac/Strings.h"

namespace platform {

std::optional<std::vector<unsigned char>> userDefaultsData(const std::string &key)
{
    @autoreleasepool {
        NSString *name = mac::toNSString(key);
        NSData *data = name ? [[NSUserDefaults standardUserDefaults] dataForKey:name] : nil;
        return data ? std::optional(mac::toBytes(data)) : std::nullopt;
    }
}

void setUserDefaultsData(const std::string &key, const std::vector<unsigned char> &data)
{
    @autoreleasepool {
        if (NSString *name = mac::toNSString(key))
            [[NSUserDefaults standardUserDefaults] setObject:mac::toNSData(data) forKey:name];
    }
}

void synchroniseUserDefaults()
{
    @autoreleasepool {
        [[NSUserDefaults standardUserDefaults] synchronize];
    }
}

} // namespace platform
