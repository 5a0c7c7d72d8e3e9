#include "tools/common/LoginError.h"

#include "vipsdk/include/VipSdkDefine.h"

#include <utility>

namespace {

constexpr std::pair<int, const char *> kErrors[] = {
    {vip_sdk::LOGIN_ERROR_ALREADY_REGISTERED, "this email has been registered"},
    {vip_sdk::LOGIN_ERROR_NAME_TOO_LONG, "name too long"},
    {vip_sdk::LOGIN_ERROR_MALFORMED_EMAIL, "email format wrong"},
    {vip_sdk::LOGIN_ERROR_NO_SUCH_ACCOUNT, "account don't exists"},
    {vip_sdk::LOGIN_ERROR_WRONG_PASSWORD, "password error"},
};

} // namespace

std::string loginErrorText(int code)
{
    for (const auto &[known, text] : kErrors)
        if (known == code)
            return text + (" (" + std::to_string(code) + ')');
    return "unknown error code " + std::to_string(code);
}
