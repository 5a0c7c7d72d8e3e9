#include "paths/platform/Announcement_p.h"

#include "paths/platform/mac/Strings_p.h"

#import <AppKit/AppKit.h>

namespace platform {

// Qt 5 keeps the alerts of widgets to itself.
void announce(QWidget * /*source*/, const QString &text)
{
    @autoreleasepool {
        NSString *spoken = mac::toNSString(text.toStdString());
        if (!spoken || !NSApp)
            return;
        id source = NSApp;
        if ([NSApp mainWindow])
            source = [NSApp mainWindow];
        NSDictionary *info =
            @{NSAccessibilityAnnouncementKey : spoken,
              NSAccessibilityPriorityKey : @(NSAccessibilityPriorityHigh)};
        NSAccessibilityPostNotificationWithUserInfo(source, NSAccessibilityAnnouncementRequestedNotification, info);
    }
}

} // namespace platform
