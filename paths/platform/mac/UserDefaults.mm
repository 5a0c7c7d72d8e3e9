#include "paths/platform/UserDefaults.h"

#include "paths/platform/mac/Data.h"
#include "paths/platform/mac/Strings.h"

#include <algorithm>

namespace platform {

std::optional<std::vector<unsigned char>> userDefaultsData(const std::string &key)
{
    @autoreleasepool {
        NSString *name = mac::toNSString(key);
        NSData *data = name ? [[NSUserDefaults standardUserDefaults] dataForKey:name] : nil;
        return data ? std::optional(mac::toBytes(data)) : std::nullopt;
    }
}

std::vector<std::string> userDefaultsKeys(const std::string &prefix)
{
    std::vector<std::string> keys;
    @autoreleasepool {
        NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
        for (NSString *name in [defaults dictionaryRepresentation]) {
            std::string key = mac::toUtf8(name);
            if (key.compare(0, prefix.size(), prefix) == 0 && [defaults dataForKey:name])
                keys.push_back(std::move(key));
        }
    }
    std::sort(keys.begin(), keys.end());
    return keys;
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
