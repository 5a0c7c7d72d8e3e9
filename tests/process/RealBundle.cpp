#include "tests/process/RealBundle.h"

namespace fs = std::filesystem;

namespace test {

void start(QProcess &process, const std::string &program, const QStringList &arguments, const std::string &home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", QString::fromStdString(home));
    environment.insert("XDG_DATA_HOME", QString::fromStdString(home + "/data"));
    environment.insert("CFFIXED_USER_HOME", QString::fromStdString(home)); // what HOME is to macOS
    // Signs are those of the pages, and Qt says nothing about the locale.
    environment.insert("LC_ALL", "C.UTF-8");
    environment.remove("TERM");
    process.setProcessEnvironment(environment);
    process.start(QString::fromStdString(program), arguments);
}

ProcessResult runProcess(const std::string &program, const QStringList &arguments, const std::string &home,
                         const std::string &input)
{
    constexpr int deadline = 600'000; // for what hangs
    QProcess process;
    start(process, program, arguments, home);
    process.write(input.data(), static_cast<qint64>(input.size()));
    process.closeWriteChannel();
    ProcessResult result;
    if (process.waitForFinished(deadline) && process.exitStatus() == QProcess::NormalExit)
        result.exitStatus = process.exitCode();
    result.output = process.readAllStandardOutput().toStdString();
    result.errors = process.readAllStandardError().toStdString();
    return result;
}

ProcessResult runScript(const QString &script, const QStringList &arguments)
{
    const TempDir dir;
    const QString there = QString::fromStdString("cd '" + dir.path().string() + "'\n");
    return runProcess("/bin/sh", QStringList{"-c", there + script, "sh"} + arguments, dir / "home");
}

RealBundle::RealBundle(const std::string &place) : m_place(*this / place)
{
    fs::create_directories(m_place.parent_path());
    fs::copy(OND_TEST_BUNDLE, m_place, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    fs::create_directories(home());
}

std::string RealBundle::supportDir() const
{
#if defined(__APPLE__) || defined(OND_TEST_MAC)
    return home() + "/Library/Application Support";
#else
    return home() + "/data";
#endif
}

fs::path RealBundle::makeUserDataDir(const std::string &bundleName) const
{
    fs::create_directories(supportDir() + '/' + bundleName);
    return supportDir() + '/' + bundleName;
}

ProcessResult RealBundle::sh(const QString &line, const std::string &input) const
{
    const QString there = "cd '" + QString::fromStdString(path().string()) + "'; ";
    return runProcess("/bin/sh", {"-ec", there + line, inspector().c_str()}, home(), input);
}

} // namespace test
