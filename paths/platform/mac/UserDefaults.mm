#include "paths/platform/UserDefaults_p.h"

#include "paths/platform/mac/Data_p.h"
#include "paths/platform/mac/Strings_p.h"

namespace platform {

std::optional<std::vector<unsigned char>> userDefaultsData(const std::string &key)
{
    @autoreleasepool {
        NSString *name = mac::toNSString(key);
        NSData *data = name ? [[NSUserDefaults standardUserDefaults] dataForKey:name] : nil;
        return data ? std::optional(mac::toBytes(data)) : std::nullopt;
    }
}

std::map<std::string, std::vector<unsigned char>> userDefaultsWithPrefix(const std::string &prefix)
{
    std::map<std::string, std::vector<unsigned char>> result;
    @autoreleasepool {
        NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
        for (NSString *name in [defaults dictionaryRepresentation]) {
            const std::string key = mac::toUtf8(name);
            NSData *data = [defaults dataForKey:name];
            if (data && key.compare(0, prefix.size(), prefix) == 0)
                result[key] = mac::toBytes(data);
        }
    }
    return result;
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
