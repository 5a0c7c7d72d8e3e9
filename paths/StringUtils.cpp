#include "paths/StringUtils.h"

#include <algorithm>
#include <charconv>

void StringSplit(const std::string &s, std::vector<std::string> &out, const std::string &sep)
{
    std::size_t start = 0;
    for (std::size_t pos = s.find(sep); pos != std::string::npos; pos = s.find(sep, start)) {
        out.push_back(s.substr(start, pos - start));
        start = pos + sep.size();
    }
    // Callers rely on a trailing separator giving no empty last field.
    if (start != s.size())
        out.push_back(s.substr(start));
}

bool IsAllDigits(const std::string &s)
{
    return std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool ToIntVec(const std::vector<std::string> &in, std::vector<int> &out)
{
    for (const std::string &entry : in) {
        int value = 0;
        if (!IsAllDigits(entry))
            return false;
        if (std::from_chars(entry.data(), entry.data() + entry.size(), value).ec != std::errc())
            return false;
        out.push_back(value);
    }
    return true;
}

bool VersionToIntVec(const std::string &version, std::vector<int> &out)
{
    std::vector<std::string> fields;
    StringSplit(version, fields, ".");
    return fields.size() == 3 && ToIntVec(fields, out);
}
