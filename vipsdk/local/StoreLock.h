#pragma once

#include "vipsdk/local/File.h"

#include <optional>
#include <string>

namespace local_sdk {

/// The right to change the store, held by one at a time of all threads and processes.
class StoreLock
{
public:
    /// Makes the folder when there is none. Waits for its turn, but not for ever.
    explicit StoreLock(const std::string &directory);

    [[nodiscard]] bool isHeld() const { return m_held; }

private:
    std::optional<File> m_file;
    bool m_held = false;
};

} // namespace local_sdk
