#pragma once

#include <QString>

/// Path of the updater's server file in the bundle's resources; empty outside a bundle.
[[nodiscard]] QString serverFilePath();
