#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {

/// Runs `work(0)` to `work(count - 1)` at once, each in a process of its own; whether nothing failed in any of them.
template <typename Work> [[nodiscard]] bool succeedsInProcesses(int count, Work work)
{
    std::fflush(nullptr);
    for (int i = 0; i < count; ++i) {
        if (::fork() == 0) {
            work(i);
            std::fflush(nullptr);
            ::_exit(testing::Test::HasFailure() ? 1 : 0);
        }
    }
    int status = 0;
    int succeeded = 0;
    while (::wait(&status) > 0)
        succeeded += status == 0 ? 1 : 0;
    return succeeded == count;
}

/// The same of one process, for what the library settles once per process.
template <typename Work> [[nodiscard]] bool succeedsInOwnProcess(Work work)
{
    return succeedsInProcesses(1, [&work](int) { work(); });
}

} // namespace test
