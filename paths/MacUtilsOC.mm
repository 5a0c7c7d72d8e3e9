#include "paths/MacUtilsOC.h"

#include "paths/MacUtils.h"
#include "paths/platform/mac/Strings_p.h"

bool IsProcessRunningOC(NSString *bundleId)
{
    @autoreleasepool {
        return bundleId && MacUtils::IsProcessRunning(platform::mac::toUtf8(bundleId));
    }
}

NSString *getAppDirByMacOSSymLinkPath(NSString *path)
{
    const QString folder =
        path ? getAppDirByMacOSSymLinkPath(QString::fromStdString(platform::mac::toUtf8(path))) : QString();
    return folder.isNull() ? nil : platform::mac::toNSString(folder.toStdString());
}
