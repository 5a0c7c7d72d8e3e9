#pragma once

#include <cstdint>
#include <string>

namespace vip_sdk {

/// The product that an account belongs to.
enum PRODUCT_ID : unsigned int {
    PRODUCT_ID_PDF = 13,
    PRODUCT_ID_TOLVA = 103,
};

/// The logged-in user as the SDK passes it on. Texts are UTF-32.
struct UserInfo
{
    std::wstring open_id; ///< what the service knows the user by
    std::wstring token; ///< of the session; a secret
    std::wstring nickname; ///< what the user is shown as
    std::int32_t register_from = 0; ///< the channel through which the account was registered
    bool is_logout = false; ///< the service reports the account as logged out
    std::wstring avatar; ///< address of the image
};

/// Why a login failed.
enum LoginError : int {
    LOGIN_ERROR_UNAVAILABLE = 4572000, ///< the service cannot be reached or cannot store anything
    LOGIN_ERROR_ALREADY_REGISTERED = 4572010,
    LOGIN_ERROR_NAME_TOO_LONG = 4572011,
    LOGIN_ERROR_MALFORMED_EMAIL = 4572012,
    LOGIN_ERROR_NO_SUCH_ACCOUNT = 4572013,
    LOGIN_ERROR_WRONG_PASSWORD = 4572014,
};

} // namespace vip_sdk
