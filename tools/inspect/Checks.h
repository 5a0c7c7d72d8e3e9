#pragma once

#include "tools/inspect/Doctor.h"

#include <filesystem>
#include <string>
#include <vector>

namespace inspect {

// The checks of doctor, and what they are made of.

void checkGlobalFile(Checklist &list);
void checkBundledFiles(Checklist &list);
void checkLanguages(Checklist &list);
void checkStores(Checklist &list);
/// Of the substitute for the membership SDK; nothing where the real one is at hand.
void checkAccountStore(Checklist &list);

/// `none` for what cannot be looked at.
[[nodiscard]] std::filesystem::file_type typeOf(const std::string &path);
[[nodiscard]] bool isWritable(const std::filesystem::path &path);

/// The one of `names` that `word` was probably meant to be; empty when none is near, or `word` is one of them.
[[nodiscard]] std::string nearest(const std::string &word, const std::vector<std::string> &names);

} // namespace inspect
