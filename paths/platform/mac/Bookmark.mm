#include "paths/platform/Bookmark_p.h"

#include "paths/platform/mac/Data_p.h"
#include "paths/platform/mac/Strings_p.h"

#include <memory>

namespace platform {

namespace {

/// Keeps a URL, and with it its security scope.
class KeptUrl
{
public:
#if __has_feature(objc_arc)
    explicit KeptUrl(NSURL *url) : m_url(url) { }
#else
    explicit KeptUrl(NSURL *url) : m_url([url retain]) { }
    ~KeptUrl()
    {
        [m_url release];
    }
#endif
    KeptUrl(const KeptUrl &) = delete;
    KeptUrl &operator=(const KeptUrl &) = delete;

    bool startAccess() const
    {
        @autoreleasepool {
            return [m_url startAccessingSecurityScopedResource];
        }
    }
    void stopAccess() const
    {
        @autoreleasepool {
            [m_url stopAccessingSecurityScopedResource];
        }
    }

private:
    NSURL *m_url;
};

} // namespace

CreatedBookmark createBookmark(const std::string &path, unsigned long options)
{
    @autoreleasepool {
        NSString *name = mac::toNSString(path);
        if ([name length] == 0)
            return {{}, "no path"};
        NSError *error = nil;
        NSData *data =
            [[NSURL fileURLWithPath:name] bookmarkDataWithOptions:static_cast<NSURLBookmarkCreationOptions>(options)
                                   includingResourceValuesForKeys:nil
                                                    relativeToURL:nil
                                                            error:&error];
        if ([data length] == 0)
            return {{}, mac::toUtf8([error description])};
        return {mac::toBytes(data), {}};
    }
}

ResolvedBookmark resolveBookmark(const std::vector<unsigned char> &data, unsigned long options)
{
    @autoreleasepool {
        BOOL stale = NO;
        NSError *error = nil;
        NSURL *url = [NSURL URLByResolvingBookmarkData:mac::toNSData(data)
                                               options:static_cast<NSURLBookmarkResolutionOptions>(options)
                                         relativeToURL:nil
                                   bookmarkDataIsStale:&stale
                                                 error:&error];
        if (!url)
            return {mac::toUtf8([error description]), false, {}, {}};
        const auto kept = std::make_shared<KeptUrl>(url);
        return {{}, stale != NO, [kept] { return kept->startAccess(); }, [kept] { kept->stopAccess(); }};
    }
}

} // namespace platform
