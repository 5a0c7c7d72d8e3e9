#include "config/GlobalConfigFile.h"

#include "config/MacConfigPath_p.h"
#include "paths/BundlePath_p.h"
#include "paths/RegularFile_p.h"

#include <INIReader.h>
#include <filesystem>
#include <optional>

namespace fs = std::filesystem;

namespace {

/// The parsed file, or nothing when it cannot be read as a whole.
std::optional<INIReader> readGlobalFile()
{
    const FileContent content = readRegularFile(GetDatPath(), kMaxGlobalFileSize);
    if (!content.isRead() || content.bytes.contains('\0')) // the parser would take it for the end
        return std::nullopt;
    INIReader reader(content.bytes.constData(), static_cast<std::size_t>(content.bytes.size()));
    if (reader.ParseError() != 0)
        return std::nullopt;
    return reader;
}

} // namespace

bool isPathExist(const std::string &path)
{
    if (path.empty() || path.find('\0') != std::string::npos) // where the system would take it to end
        return false;
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    return type != fs::file_type::none && type != fs::file_type::not_found;
}

std::string GetDatPath()
{
    // Not through the MacConfigPath instance: the switches are read while that is being built.
    std::error_code error;
    const std::string directory = withTrailingSlash(fs::path(executablePath(error)).parent_path());
    if (error)
        return {};
    const std::optional<std::string> prefix = prefixOfMainBundle(directory);
    return prefix ? *prefix + ".app/Contents/Resources/mk.dat" : "mk.dat";
}

long GetIntValueFromMKDat(const std::string &section, const std::string &key, long defaultValue)
{
    const std::optional<INIReader> file = readGlobalFile();
    // A readable file answers 0 for a key that it lacks: callers rely on the default standing for a missing file only.
    return file ? file->GetInteger(section, key, 0) : defaultValue;
}

std::string GetStrValueFromMKDat(const std::string &section, const std::string &key, const std::string &defaultValue)
{
    const std::optional<INIReader> file = readGlobalFile();
    return file ? file->GetString(section, key, defaultValue) : defaultValue;
}
