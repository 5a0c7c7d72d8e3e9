#pragma once

#include <QByteArray>
#include <string>

/// Property lists, in either format. Whatever a list holds, reading it takes little time, and less than 64 MiB.
namespace platform::generic {

/// A text at the top level of the list at `path`; empty when there is none, or when the file is missing, no regular
/// file, larger than any Info.plist, or malformed.
[[nodiscard]] std::string propertyListText(const std::string &path, const std::string &key);

/// The same of the bytes of a list.
[[nodiscard]] std::string textInPropertyList(const QByteArray &bytes, const std::string &key);

} // namespace platform::generic
