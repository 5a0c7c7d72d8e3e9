#include "vipsdk/local/StoreLock.h"

#include "vipsdk/local/DataDirectory.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace local_sdk {

StoreLock::StoreLock(const std::string &directory)
{
    if (!makeTrustedDirectory(directory))
        return;
    m_file.emplace(directory + "/lock", O_RDWR | O_CREAT, S_IRUSR | S_IWUSR);
    m_held = m_file->isOpen() && m_file->secure() && m_file->lock();
}

} // namespace local_sdk
