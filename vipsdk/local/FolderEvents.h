#pragma once

#include <chrono>
#include <memory>
#include <string>

namespace local_sdk {

/// Waits for the system to tell that names in a folder came, went or were exchanged. One thread watches and waits.
class FolderEvents
{
public:
    FolderEvents();
    ~FolderEvents();
    FolderEvents(const FolderEvents &) = delete;
    FolderEvents &operator=(const FolderEvents &) = delete;

    /// Watches the folder that has this path now, in place of the one before. False when the system does not do it.
    [[nodiscard]] bool watch(const std::string &path);
    /// Waits for a change since watch(), for wake() or for the time to pass. Whether it was a change.
    bool wait(std::chrono::milliseconds longest);
    /// Ends the wait in progress, or else the next one. Callable from any thread.
    void wake();

private:
    struct Private;
    const std::unique_ptr<Private> m_private;
};

} // namespace local_sdk
