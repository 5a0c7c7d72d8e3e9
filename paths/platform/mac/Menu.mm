#include "paths/platform/Menu_p.h"

#include "paths/platform/mac/Strings_p.h"

#import <AppKit/AppKit.h>

namespace platform {

void retitleSubmenuItems(const std::function<std::optional<QString>(const QString &title)> &newTitle)
{
    @autoreleasepool {
        for (NSMenuItem *top in [[NSApp mainMenu] itemArray]) {
            for (NSMenuItem *item in [[top submenu] itemArray]) {
                const std::optional<QString> title = newTitle(QString::fromStdString(mac::toUtf8([item title])));
                NSString *text = title ? mac::toNSString(title->toStdString()) : nil;
                if (text)
                    [item setTitle:text];
            }
        }
    }
}

} // namespace platform
