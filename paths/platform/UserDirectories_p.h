#pragma once

#include <string>

/// Folders of the current user. Callable from any thread.
namespace platform {

/// The folder in which applications keep the user's data, or empty. It need not exist.
/// macOS: the first application-support directory of the user domain. Elsewhere: XDG_DATA_HOME or its default, as the
/// freedesktop.org base directories define them; a relative one is ignored, and where HOME tells no folder, the user
/// database does. Bytes that are no UTF-8 read as U+FFFD, so that one folder has one name for everybody.
[[nodiscard]] std::string applicationSupportDirectory();

/// The user's real home folder from the user database, or empty when it does not answer.
[[nodiscard]] std::string homeDirectoryOfUser();

/// The container that the applications of a group share, without a trailing "/", or empty when there is none.
[[nodiscard]] std::string groupContainer(const std::string &groupId);

} // namespace platform
