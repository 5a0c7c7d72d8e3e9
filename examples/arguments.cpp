#include <iostream>
#include <runtime/CCmdLineParser.h>

int main()
{
    const CCmdLineParser line(LR"(-open:"annual report.pdf" /page=3 -print)");
    std::cout << "open   " << line.GetVal(L"open").toStdString() << '\n'
              << "page   " << line.GetIntVal(L"page", 1) << '\n'
              << "print  " << (line.HasKey(L"print") ? "yes" : "no") << '\n';
}
