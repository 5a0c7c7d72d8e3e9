#pragma once

#include "tools/inspect/Doctor.h"

#include <filesystem>
#include <string>

namespace inspect {

/// `none` for what cannot be looked at.
[[nodiscard]] std::filesystem::file_type typeOf(const std::string &path);
[[nodiscard]] bool isWritable(const std::filesystem::path &path);

/// What the bundle comes with and the library does without: settings, languages, documents.
void checkBundledFiles(Findings &findings);
/// What the library keeps for the user: settings, counters, the registry's keys.
void checkStores(Findings &findings);

} // namespace inspect
