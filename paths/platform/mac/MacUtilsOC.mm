#include "paths/platform/mac/MacUtilsOC.h"

#include "paths/MacUtils.h"

bool IsProcessRunningOC(NSString *bundleId) { return bundleId && IsProcessRunningOC(QString::fromNSString(bundleId)); }

NSString *getAppDirByMacOSSymLinkPath(NSString *path)
{
    const QString folder = path ? getAppDirByMacOSSymLinkPath(QString::fromNSString(path)) : QString();
    return folder.isNull() ? nil : folder.toNSString();
}
