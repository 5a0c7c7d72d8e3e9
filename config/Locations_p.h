#pragma once

#include <QString>
#include <string>

/// Places and files that several classes need. All texts are absolute paths, as MacConfigPath has them; folders end in
/// "/". Callable from any thread.
namespace locations {

/// `folder`, which is created with all those above it when it is missing; not if it has no base folder.
QString created(const QString &folder);

/// The user data folder, created if `create`.
[[nodiscard]] QString userDataDir(bool create);
/// `name` in the user data folder, which is created.
[[nodiscard]] QString inUserData(const char *name);
/// `relative` in the bundle's resources; empty outside a bundle.
[[nodiscard]] QString inApplication(const std::string &relative);

/// The local application configuration in the user data folder, which is created if `create`.
[[nodiscard]] QString appConfig(bool create);
/// The configuration data of the bundle.
[[nodiscard]] QString configData();
/// The file with the product's version date.
[[nodiscard]] QString versionConfig();
/// The updater's server file.
[[nodiscard]] QString serverFile();

/// The folder of the running executable.
[[nodiscard]] QString applicationDir();
/// The folder that holds the product's executables: "Contents/MacOS/" of the main application's bundle; outside a
/// bundle that of the running executable.
[[nodiscard]] QString parentAppDir();

} // namespace locations
