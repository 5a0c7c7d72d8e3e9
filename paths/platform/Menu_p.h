#pragma once

#include <QString>
#include <functional>
#include <optional>

/// The application's main menu. Main thread only.
namespace platform {

/// Calls `newTitle` with the title of every item of every submenu of the main menu; a result becomes the
/// item's title. Nothing happens without a main menu.
void retitleSubmenuItems(const std::function<std::optional<QString>(const QString &title)> &newTitle);

} // namespace platform
