#include "paths/platform/OpenPanel_p.h"

#include "paths/platform/mac/Strings_p.h"

#import <AppKit/AppKit.h>

namespace platform {

std::optional<std::vector<std::string>> runOpenPanel(const OpenPanelRequest &request)
{
    @autoreleasepool {
        NSOpenPanel *panel = [NSOpenPanel openPanel];
        NSString *folder = mac::toNSString(request.startFolder);
        if (!folder)
            return std::nullopt;
        if ([folder length] > 0)
            [panel setDirectoryURL:[NSURL fileURLWithPath:folder]];
        [panel setAllowsMultipleSelection:NO];
        [panel setCanChooseDirectories:YES];
        [panel setCanChooseFiles:!request.foldersOnly];
        NSString *prompt = mac::toNSString(request.prompt);
        if ([prompt length] > 0)
            [panel setPrompt:prompt];

        if ([panel runModal] != NSModalResponseOK)
            return std::nullopt;
        std::vector<std::string> paths;
        for (NSURL *url in [panel URLs]) {
            if (NSString *path = [url path])
                paths.push_back(mac::toUtf8(path));
        }
        return paths;
    }
}

} // namespace platform
