#include "config/MacConfigPath.h"
#include <cstdio>
int main()
{
    std::puts(MacConfigPath::GetInstance()->GetLogPath().c_str());
}
