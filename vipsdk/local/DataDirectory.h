#pragma once

#include <string>

namespace local_sdk {

/// The folder that holds the accounts, the session and the spool: ONDVIPSDK_DATA_DIR when that is an absolute path,
/// else "ondvipsdk" in the user's data folder. Without a trailing "/"; it need not exist.
[[nodiscard]] std::string dataDirectory();

/// Whether the folder may be read: it belongs to this user and nobody else can write to it.
[[nodiscard]] bool isTrustedDirectory(const std::string &path);

/// Makes the folder, readable by the user only, unless it exists; whether it may be written to.
[[nodiscard]] bool makeTrustedDirectory(const std::string &path);

} // namespace local_sdk
