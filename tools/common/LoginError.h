#pragma once

#include <string>

/// What the login dialog says of an error code of the account service, in English, and the code.
[[nodiscard]] std::string loginErrorText(int code);
