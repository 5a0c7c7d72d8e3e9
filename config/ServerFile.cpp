#include "config/ServerFile_p.h"

#include "config/MacConfigPath.h"

QString serverFilePath()
{
    return QString::fromStdString(MacConfigPath::GetInstance()->GetAppConfigPath("ressrc\\chs\\upnest.svr"));
}
