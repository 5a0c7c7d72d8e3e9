#pragma once

#include "tools/inspect/Actions.h"

#include <QString>
#include <string>

namespace inspect {

/// The folder of the registry's keys, with a trailing "/". It need not exist.
[[nodiscard]] std::string registryFolder();
/// Whether that folder exists. Opening a key would create it.
[[nodiscard]] bool hasRegistry();

/// Throws std::runtime_error unless the key's file holds what this process has written to it, which the registry does
/// not tell. WrongUse for a key that is refused.
void requireSaved(const QString &key, const QString &name, const QString &value);

/// All values of a key; the one that is named; or that one, after it was written. Reading creates nothing. Throws
/// WrongUse for a key that is refused, std::runtime_error for what is not there or cannot be written.
[[nodiscard]] Run registry(CLI::App &command);

} // namespace inspect
