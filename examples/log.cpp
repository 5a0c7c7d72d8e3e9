#include <config/MacConfigPath.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <runtime/CommonFileLog.h>

int main()
{
    CommonFileLog::WriteLog("goes nowhere: the log is off");

    // What support staff do by hand: the log is on while its file exists.
    const std::filesystem::path path = MacConfigPath::GetInstance()->GetLogPath();
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path).close();

    CommonFileLog::WriteLog("opened report.pdf");
    std::ifstream log(path);
    for (std::string line; std::getline(log, line);)
        std::cout << "... " << line.substr(line.find("]  ") + 3) << '\n';
}
