#include "tests/support/TestFiles.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

namespace test {

TempDir::TempDir()
{
    std::string pattern = (fs::canonical(fs::temp_directory_path()) / "ond-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    m_path = pattern;
}

TempDir::~TempDir()
{
    std::error_code error;
    fs::remove_all(m_path, error);
}

void writeFile(const fs::path &path, const std::string &content)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!(file << content).flush())
        throw std::runtime_error("cannot write " + path.string());
}

std::string readFile(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string logMessages(const fs::path &path)
{
    std::string messages;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        messages += line.substr(line.find("]  ") + 3) + "\n";
    return messages;
}

} // namespace test
