#include <config/MacConfigPath.h>
#include <filesystem>
#include <iostream>

int main()
{
    const std::filesystem::path log = MacConfigPath::GetInstance()->GetLogPath();
    std::cout << "log of " << log.stem().string() << '\n';
}
