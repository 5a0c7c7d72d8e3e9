#include "paths/platform/OpenPanel_p.h"

#include "paths/platform/mac/Strings_p.h"

#import <AppKit/AppKit.h>
#include <QCoreApplication>
#include <filesystem>

namespace platform {

namespace {

/// The panel gives file names in another Unicode normalisation than everybody else, and folders by their real path:
/// where the chosen one is the one that it was asked to begin with, that one's own spelling stands.
std::string spelledAsAsked(const std::string &chosen, const std::string &asked)
{
    std::error_code error;
    const bool same = !asked.empty() && asked.back() != '/' && std::filesystem::equivalent(chosen, asked, error);
    return same ? asked : chosen;
}

} // namespace

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

        // What is left of a modal dialog that has just closed would close the panel, too.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
        if ([panel runModal] != NSModalResponseOK)
            return std::nullopt;
        std::vector<std::string> paths;
        for (NSURL *url in [panel URLs]) {
            if (NSString *path = [url path])
                paths.push_back(spelledAsAsked(mac::toUtf8(path), request.startFolder));
        }
        return paths;
    }
}

} // namespace platform
