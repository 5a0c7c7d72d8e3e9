#pragma once

#include <string>

/// The system's own log. Callable from any thread.
namespace platform {

/// Writes one message. macOS: NSLog. Elsewhere: syslog(3), facility user, level notice.
void systemLog(const std::string &message);

} // namespace platform
