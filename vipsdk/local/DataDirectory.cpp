#include "vipsdk/local/DataDirectory.h"

#include <QStandardPaths>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace local_sdk {

std::string dataDirectory()
{
    const char *chosen = std::getenv("ONDVIPSDK_DATA_DIR");
    if (chosen && chosen[0] == '/') {
        std::string path = chosen;
        path.erase(path.find_last_not_of('/') + 1);
        return path;
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString() + "/ondvipsdk";
}

bool isTrustedDirectory(const std::string &path)
{
    struct stat status
    {
    };
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid()
        && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool makeTrustedDirectory(const std::string &path)
{
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    ::mkdir(path.c_str(), S_IRWXU);
    return isTrustedDirectory(path);
}

} // namespace local_sdk
