#include "runtime/ProcessEnd_p.h"

#include <QString>
#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <system_error>
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
    /// Has Qt make what a thread needs to start, the encoding for its name, before this: at exit it goes after this,
    /// which waits for such threads. They wait for good for a lock that is gone.
    Exit() { static_cast<void>(QStringLiteral("-").toLocal8Bit()); }
    ~Exit()
    {
        std::promise<void> promise;
        const std::future<void> done = promise.get_future();
        try {
            std::thread([promise = std::move(promise)]() mutable {
                callAll();
                promise.set_value();
            }).detach();
        } catch (const std::system_error &) {
            callAll();
            return;
        }
        done.wait_for(kPatience);
    }
};

} // namespace

void atProcessEnd(ProcessEnd what, void (*end)())
{
    g_ends.at(static_cast<std::size_t>(what)) = end;
    static const Exit atExit;
}
