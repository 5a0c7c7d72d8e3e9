#include "paths/platform/SystemLog_p.h"

#include <syslog.h>

namespace platform {

void systemLog(const std::string &message)
{
    // Longer than any daemon keeps; formatting more of a huge message is wasted time.
    ::syslog(LOG_USER | LOG_NOTICE, "%.8192s", message.c_str());
}

} // namespace platform
