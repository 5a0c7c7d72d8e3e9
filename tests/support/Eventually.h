#pragma once

#include <chrono>
#include <thread>

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

} // namespace test
