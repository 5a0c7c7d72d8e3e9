#include <config/MacConfigPath.h>
#include <iostream>

int main()
{
    std::cout << "log: " << MacConfigPath::GetInstance()->GetLogPath() << '\n';
}
