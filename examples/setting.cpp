#include <config/ConfigFileUtil.h>
#include <iostream>

int main()
{
    const int unset = -1;
    std::cout << "zoom before  " << ConfigFileUtil::GetLocalAppCfgValueInt("view/zoom", unset) << '\n';
    ConfigFileUtil::SetLocalAppCfgValueInt("view/zoom", 125);
    std::cout << "zoom now     " << ConfigFileUtil::GetLocalAppCfgValueInt("view/zoom", unset) << '\n';
}
