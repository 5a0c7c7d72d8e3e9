#pragma once

#include <cstdlib>
#include <string>

namespace test {

/// A message whose end can be told from its beginning: "<number>:<length> xxxx".
inline std::string messageOf(int number)
{
    const std::string head = std::to_string(number) + ":";
    const std::size_t length = static_cast<std::size_t>(number) * 7919 % 20'000;
    return head + std::to_string(length) + " " + std::string(length, 'x');
}

inline int numberOf(const std::string &message)
{
    return std::atoi(message.c_str());
}

} // namespace test
