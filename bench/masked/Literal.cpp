#include "bench/masked/Literal.h"

namespace bench {

std::string literal()
{
    return kLiteral;
}

std::wstring wideLiteral()
{
    return kWideLiteral;
}

} // namespace bench
