#pragma once

#include <QString>

/// The folder that holds the product's executables: "Contents/MacOS/" of the main application's bundle; outside a
/// bundle the folder of the running executable. Ends in "/".
[[nodiscard]] QString parentAppDir();
