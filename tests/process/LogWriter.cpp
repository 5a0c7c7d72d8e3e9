// log_writer FIRST THREADS LINES: writes messages FIRST, FIRST + 1, ... to its log, LINES of them from each thread.

#include "runtime/CommonFileLog.h"
#include "tests/process/LogMessage.h"

#include <thread>
#include <vector>

int main(int, char *argv[])
{
    const int first = std::atoi(argv[1]);
    const int lines = std::atoi(argv[3]);
    std::vector<std::thread> writers;
    for (int thread = 0; thread < std::atoi(argv[2]); ++thread) {
        writers.emplace_back([begin = first + thread * lines, lines] {
            for (int number = begin; number < begin + lines; ++number)
                CommonFileLog::WriteLog(test::messageOf(number));
        });
    }
    for (std::thread &writer : writers)
        writer.join();
}
