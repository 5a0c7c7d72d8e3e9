#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

/// The user's defaults of this application: data under keys, kept from run to run. Callable from any thread and from
/// several processes at once.
///
/// macOS: the standard user defaults. Elsewhere: "user-defaults.ini" in the folder that bears the application's name
/// (identifier of the running bundle, or the file name of an executable outside a bundle) in the application-support
/// directory. One line per entry, added by a single write, so that processes that write at the same time lose nothing;
/// of two lines with one key the later one holds. Lines that are cut off or damaged are passed over. A file of more
/// than 64 MiB is not read, and never made.
namespace platform {

/// The data under a key, or nothing when there is none.
[[nodiscard]] std::optional<std::vector<unsigned char>> userDefaultsData(const std::string &key);

/// All data under keys that begin with `prefix`.
[[nodiscard]] std::map<std::string, std::vector<unsigned char>> userDefaultsWithPrefix(const std::string &prefix);

/// Stores data under a key. What cannot be stored is dropped.
void setUserDefaultsData(const std::string &key, const std::vector<unsigned char> &data);

/// Brings what was stored to disk now.
void synchroniseUserDefaults();

} // namespace platform
