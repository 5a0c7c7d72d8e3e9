// A process that only asks for places, as a companion of the product does first.

#include "config/MacConfigPath.h"
#include "paths/PathUtils.h"

#include <cstdio>

int main()
{
    const MacConfigPath *places = MacConfigPath::GetInstance();
    std::puts(places->GetUserDataDir().c_str());
    std::puts(places->GetAppConfigPath("cfgdata").c_str());
    std::puts(qUtf8Printable(PathUtils::getApplicationDir()));
}
