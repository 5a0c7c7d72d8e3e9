#pragma once

#include <string>

/// Property lists, read with libplist.
namespace platform::generic {

/// A text at the top level of the XML or binary property list at `path`; empty when there is none, or when the file is
/// missing, no regular file, larger than any Info.plist, or malformed.
[[nodiscard]] std::string propertyListText(const std::string &path, const std::string &key);

} // namespace platform::generic
