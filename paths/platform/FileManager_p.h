#pragma once

#include <QString>

/// The user's file manager. Main thread only.
namespace platform {

/// Shows the folder that holds a file; whether that was started.
/// macOS: with the file selected. Elsewhere: what the system has registered for opening folders shows it.
[[nodiscard]] bool revealFile(const QString &path);

} // namespace platform
