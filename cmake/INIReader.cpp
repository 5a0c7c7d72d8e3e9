#include <INIReader.h>

#include <cctype>
#include <cstdlib>
#include <ini.h>

// The C++ half of inih. Its library hands std::string across and so belongs to one C++ library; with another one the
// reader is compiled here, on the half that is C.

INIReader::INIReader(const std::string &filename) : _error(0)
{
    _error = ini_parse(filename.c_str(), ValueHandler, this); // fills the map, which is a later member
}

INIReader::INIReader(const char *buffer, size_t buffer_size) : _error(0)
{
    _error = ini_parse_string(std::string(buffer, buffer_size).c_str(), ValueHandler, this);
}

int INIReader::ParseError() const
{
    return _error;
}

std::string INIReader::Get(const std::string &section, const std::string &name, const std::string &default_value) const
{
    const auto found = _values.find(MakeKey(section, name));
    return found == _values.end() ? default_value : found->second;
}

std::string INIReader::GetString(const std::string &section, const std::string &name,
                                 const std::string &default_value) const
{
    const std::string text = Get(section, name, "");
    return text.empty() ? default_value : text;
}

long INIReader::GetInteger(const std::string &section, const std::string &name, long default_value) const
{
    const std::string text = Get(section, name, "");
    char *end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 0);
    return end > text.c_str() ? value : default_value;
}

bool INIReader::HasSection(const std::string &section) const
{
    const std::string key = MakeKey(section, "");
    const auto next = _values.lower_bound(key);
    return next != _values.end() && next->first.compare(0, key.size(), key) == 0;
}

std::string INIReader::MakeKey(const std::string &section, const std::string &name)
{
    std::string key = section + "=" + name;
    for (char &c : key)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return key;
}

int INIReader::ValueHandler(void *user, const char *section, const char *name, const char *value)
{
    if (name) {
        std::string &all = static_cast<INIReader *>(user)->_values[MakeKey(section, name)];
        if (!all.empty())
            all += '\n';
        all += value ? value : "";
    }
    return 1;
}
