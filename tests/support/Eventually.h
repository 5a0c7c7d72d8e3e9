#pragma once

#include <chrono>
#include <thread>
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

} // namespace test
