#include "config/WriteTurn_p.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

using namespace std::chrono_literals;

namespace {

constexpr auto kTimeout = 5s;
constexpr auto kStep = 1ms; // what QSettings tells apart

int openFolderOf(const std::string &path)
{
    std::error_code ignored;
    const fs::path folder = fs::path(path).parent_path();
    fs::create_directories(folder, ignored);
    return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

} // namespace

WriteTurn::WriteTurn(const std::string &path) : m_path(path), m_descriptor(openFolderOf(path))
{
    const auto deadline = std::chrono::steady_clock::now() + kTimeout;
    while (m_descriptor >= 0 && isAnothers() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(kStep / 2);
    m_before = version();
}

WriteTurn::~WriteTurn()
{
    const std::optional<Version> after = version();
    if (m_before && after && after->inode != m_before->inode && after->time < m_before->time + kStep) {
        std::error_code error;
        fs::last_write_time(m_path, m_before->time + kStep, error);
    }
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

/// False also where the file system knows no locks.
bool WriteTurn::isAnothers() const
{
    return ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
}

std::optional<WriteTurn::Version> WriteTurn::version() const
{
    struct stat status
    {
    };
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(m_path, error);
    if (error || ::stat(m_path.c_str(), &status) != 0)
        return std::nullopt;
    return Version{status.st_ino, time};
}
