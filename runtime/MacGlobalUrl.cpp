#include "runtime/MacGlobalUrl.h"

std::string MacGlobalUrl::GetDefSvrHost(bool *usesTestServer)
{
    if (usesTestServer)
        *usesTestServer = false;
    return {};
}

std::string MacGlobalUrl::GetVipSvrHost()
{
    return {};
}
