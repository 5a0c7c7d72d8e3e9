#pragma once

#include <optional>
#include <string>
#include <vector>

/// The modal panel in which the user chooses a file or a folder. Main thread only.
namespace platform {

struct OpenPanelRequest
{
    std::string startFolder; ///< Empty: wherever the panel opens by itself.
    bool foldersOnly = false; ///< Otherwise files may be chosen as well.
    std::string prompt; ///< Title of the confirm button; empty: the panel's own.
};

/// The chosen paths, folders without a trailing "/"; nothing when the user cancelled, or when no panel can be shown
/// (elsewhere than on macOS: without a QApplication, and on other threads than its own).
[[nodiscard]] std::optional<std::vector<std::string>> runOpenPanel(const OpenPanelRequest &request);

} // namespace platform
