#pragma once

#include <string>

// What is found out here once is kept for the life of the process. Texts are UTF-8, without a "/" at their end.
// Callable from any thread.

/// The user's real home folder, also from inside the sandbox, where HOME names the container: from the user database,
/// else the first two folders of HOME, else "/Users/" + USER.
[[nodiscard]] std::string homePath();

/// The root of the container that the applications of a group share. Where the platform knows no such container, a
/// folder below homePath(). Not created.
[[nodiscard]] std::string groupContainer(const std::string &group);
