#include "vipsdk/include/OndIniWrapper.h"

#include <QString>
#include <filesystem>
#include <fstream>
#include <map>
#include <string_view>
#include <utility>

namespace fs = std::filesystem;

namespace cf_ini {

struct OndIniWrapper::Content
{
    using Section = std::map<std::wstring, std::wstring>;

    [[nodiscard]] const std::wstring *find(const wchar_t *section, const wchar_t *key) const
    {
        const auto keys = sections.find(section);
        const auto found = keys == sections.end() ? Section::const_iterator() : keys->second.find(key);
        return keys == sections.end() || found == keys->second.end() ? nullptr : &found->second;
    }

    std::map<std::wstring, Section> sections; // a file may have many lines of one with a long name
};

namespace {

constexpr std::uintmax_t kMaxSize = 16U << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Anything but a regular file is refused unopened: opening a FIFO would wait for a writer.
bool readWhole(const fs::path &path, std::string &bytes)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        return false;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > kMaxSize)
        return false;
    std::ifstream file(path, std::ios::binary);
    bytes.resize(size);
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return file.is_open();
}

std::string_view trimmed(std::string_view text)
{
    constexpr char blanks[] = " \t";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string_view takeLine(std::string_view &text)
{
    const std::size_t end = text.find_first_of("\r\n");
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

std::wstring decoded(std::string_view text)
{
    const int size = static_cast<int>(text.size());
    const QString utf8 = QString::fromUtf8(text.data(), size);
    const bool isUtf8 = !utf8.contains(QChar::ReplacementCharacter);
    return (isUtf8 ? utf8 : QString::fromLatin1(text.data(), size)).toStdWString();
}

} // namespace

OndIniWrapper::OndIniWrapper() : m_content(std::make_unique<Content>()) { }

OndIniWrapper::~OndIniWrapper() = default;

int OndIniWrapper::LoadFile(const wchar_t *path, int, int)
{
    m_content->sections.clear();
    std::string bytes;
    if (!path || !readWhole(QString::fromWCharArray(path).toStdString(), bytes))
        return 0;

    std::string_view rest = bytes;
    if (rest.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        rest.remove_prefix(kByteOrderMark.size());
    Content::Section *section = &m_content->sections[L""];
    while (!rest.empty()) {
        const std::string_view line = trimmed(takeLine(rest));
        if (line.empty() || line.front() == ';' || line.front() == '#')
            continue;
        const std::size_t equals = line.find('=');
        const std::size_t bracket = line.find(']');
        if (line.front() == '[' && bracket != std::string_view::npos)
            section = &m_content->sections[decoded(trimmed(line.substr(1, bracket - 1)))];
        else if (equals != std::string_view::npos)
            (*section)[decoded(trimmed(line.substr(0, equals)))] = decoded(trimmed(line.substr(equals + 1)));
    }
    return 1;
}

std::wstring OndIniWrapper::Read(const wchar_t *section, const wchar_t *key, const wchar_t *defaultValue) const
{
    const std::wstring *found = m_content->find(section, key);
    return found ? *found : defaultValue;
}

int OndIniWrapper::ReadInt(const wchar_t *section, const wchar_t *key, int defaultValue) const
{
    const std::wstring *found = m_content->find(section, key);
    return found ? QString::fromStdWString(*found).toInt() : defaultValue;
}

} // namespace cf_ini
