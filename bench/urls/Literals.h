#pragma once

#include <string>

namespace bench {

/// Texts as long as the addresses that they are compared with. Not inline, as the getters are not.
std::string simpleAddress();
std::string composedAddress();

} // namespace bench
