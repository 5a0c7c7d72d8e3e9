#include "bench/urls/Literals.h"

namespace bench {

std::string simpleAddress()
{
    return "https://www.pdforvell.example/legal/account-deletion";
}

std::string composedAddress()
{
    return "https://account.pdforvell.example/intl/v3/register/email";
}

} // namespace bench
