#pragma once

#include <filesystem>
#include <string>

namespace test {

/// A folder of its own for one test, removed with everything in it.
class TempDir
{
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    /// Canonical, without a trailing "/".
    [[nodiscard]] const std::filesystem::path &path() const { return m_path; }
    [[nodiscard]] std::string operator/(const std::string &name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

/// Writes a file, its folders included.
void writeFile(const std::filesystem::path &path, const std::string &content);
/// The file's bytes; empty when it cannot be read.
[[nodiscard]] std::string readFile(const std::filesystem::path &path);
/// The lines of a diagnostic log, each from its message on.
[[nodiscard]] std::string logMessages(const std::filesystem::path &path);

} // namespace test
