#include <config/MacConfigPath.h>
#include <iostream>

int main()
{
    const MacConfigPath *places = MacConfigPath::GetInstance();
    std::cout << "bundle     " << places->GetMainAppRootDir() << '\n'
              << "resources  " << places->GetAppConfigDir() << '\n'
              << "user data  " << places->GetUserDataDir() << '\n'
              << "log        " << places->GetLogPath() << '\n';
}
