// A process that links the same Qt libraries and asks for nothing: what no user of them gets around.

#include <QtGlobal>
#include <cstdio>

int main()
{
    std::puts(qVersion());
}
