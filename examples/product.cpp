#include <config/MacGlobalConfig.h>
#include <config/MacGlobalSetting.h>
#include <iostream>
#include <runtime/MacGlobalUrl.h>

int main()
{
    std::cout << "name      " << MacGlobalConfig::GetProductName(true) << '\n'
              << "edition   " << (MacGlobalConfig::isInternationalApp() ? "international" : "domestic") << '\n'
              << "package   " << (MacGlobalConfig::IsAppleStorePKG() ? "app store" : "download") << '\n'
              << "language  " << MacGlobalSetting::GetCurrentLanguage() << '\n'
              << "log in    " << MacGlobalUrl::GetLoginUrl() << '\n';
}
