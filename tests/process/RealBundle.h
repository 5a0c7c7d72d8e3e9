#pragma once

#include "tests/support/TestFiles.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <nlohmann/json.hpp>
#include <string>

namespace test {

struct ProcessResult
{
    int exitStatus = -1; // -1: it crashed or did not end in time
    std::string output;
    std::string errors;
};

/// Starts a program in the test's environment with the user's folders below `home`, a locale in UTF-8 and no terminal.
void start(QProcess &process, const std::string &program, const QStringList &arguments, const std::string &home);

/// Runs a program that is started so to its end on `input`.
[[nodiscard]] ProcessResult runProcess(const std::string &program, const QStringList &arguments,
                                       const std::string &home, const std::string &input = {});

/// What the shell makes of a script with these arguments, from "$1" on, in a temporary folder.
[[nodiscard]] ProcessResult runScript(const QString &script, const QStringList &arguments);

/// A copy of the assembled bundle, for a test to change and to run.
struct RealBundle : TempDir
{
    /// `place` is the bundle's path in the temporary folder, its name included.
    explicit RealBundle(const std::string &place = "PDF Orvell.app");

    /// A path in the bundle's Contents folder.
    [[nodiscard]] std::filesystem::path contents(const std::string &name) const { return m_place / "Contents" / name; }
    [[nodiscard]] std::filesystem::path globalFile() const { return contents("Resources/mk.dat"); }
    [[nodiscard]] std::string inspector() const { return contents("MacOS/pdforvell-inspect").string(); }
    /// The folder that stands for the user's home.
    [[nodiscard]] std::string home() const { return *this / "home"; }
    /// The folder in it where applications keep the user's data.
    [[nodiscard]] std::string supportDir() const;
    /// The user data folder of a bundle with this name outside the sandbox, made on disk.
    [[nodiscard]] std::filesystem::path makeUserDataDir(const std::string &bundleName = "PDF Orvell") const;

    [[nodiscard]] ProcessResult inspect(const QStringList &arguments, const std::string &input = {}) const
    {
        return runProcess(inspector(), arguments, home(), input);
    }
    [[nodiscard]] nlohmann::json inspectJson(const QStringList &arguments) const
    {
        return nlohmann::json::parse(inspect(QStringList{"--json"} + arguments).output);
    }
    /// What the shell makes of `line`, with "$0" for the inspector, in the temporary folder.
    [[nodiscard]] ProcessResult sh(const QString &line, const std::string &input = {}) const;

    std::filesystem::path m_place;
};

} // namespace test
