#include "runtime/ProcessEnd_p.h"

#include <QString>
#include <array>
#include <atomic>
#include <chrono>
#include <exception>
#include <future>
#include <thread>

namespace {

constexpr std::chrono::seconds kPatience{2};

using End = void (*)();
std::array<std::atomic<End>, 2> g_ends{};

void callAll()
{
    for (const std::atomic<End> &end : g_ends)
        if (const End call = end)
            call();
}

class Exit
{
public:
    /// Has Qt make the encoding for the names of threads now. What is made before this object is destroyed after it,
    /// and ~Exit() waits for threads that may only be starting: they would wait for ever for a lock that is gone.
    Exit() { static_cast<void>(QStringLiteral("-").toLocal8Bit()); }
    ~Exit()
    {
        try {
            std::promise<void> promise;
            const std::future<void> done = promise.get_future();
            std::thread([promise = std::move(promise)]() mutable {
                callAll();
                promise.set_value();
            }).detach();
            done.wait_for(kPatience);
        } catch (const std::exception &) { // no thread, or no memory for one
            callAll();
        }
    }
};

} // namespace

void atProcessEnd(ProcessEnd what, void (*end)())
{
    g_ends.at(static_cast<std::size_t>(what)) = end;
    static const Exit atExit;
}
