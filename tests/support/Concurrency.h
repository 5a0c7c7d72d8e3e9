#pragma once

#include <chrono>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace test {

/// Waits for other threads or processes to make `condition` true; false when that takes longer than a minute.
template <typename Condition> [[nodiscard]] bool eventually(Condition condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// Runs `work(0)` to `work(count - 1)`, each on a thread of its own, to their ends.
template <typename Work> void onThreads(int count, Work work)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work, i);
    for (std::thread &thread : threads)
        thread.join();
}

/// Runs `work(0)` to `work(count - 1)` at once, each in a process of its own (also one, for what the library
/// settles once per process); whether nothing failed in any of them.
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

} // namespace test
