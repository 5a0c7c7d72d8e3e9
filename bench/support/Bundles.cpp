#include "bench/support/Bundles.h"

#include "bench/support/Ratios.h"
#include "config/MacConfigPath.h"

#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace fs = std::filesystem;

namespace bench {

namespace {

// How the program tells its copies what to do.
constexpr char kSituation[] = "OND_BENCH_SITUATION";
constexpr char kRowsFile[] = "OND_BENCH_ROWS";

int runSituation(int argc, char **argv, const std::vector<Situation> &situations, const std::string &name)
{
    for (const Situation &situation : situations)
        if (situation.name == name)
            situation.declare();

    std::ofstream file(qgetenv(kRowsFile).toStdString(), std::ios::app);
    const bool asJson = takeJsonFlag(argc, argv);
    for (const Row &row : measure(argc, argv, asJson))
        file << QJsonDocument(row.toJson()).toJson(QJsonDocument::Compact).constData() << '\n';
    return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}

std::vector<Row> readRows(const fs::path &path)
{
    std::vector<Row> rows;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        rows.push_back(Row::fromJson(QJsonDocument::fromJson(line.c_str()).object()));
    return rows;
}

/// Copies the program into a bundle of its own and runs it there. Whether it came to its end.
bool runCopy(const fs::path &root, const Situation &situation, const QStringList &arguments, const fs::path &rowsFile)
{
    const fs::path self = MacConfigPath::GetCurrentExePath();
    const fs::path contents = root / (situation.name + ".app") / "Contents";
    const fs::path home = root / (situation.name + ".home");
    fs::create_directories(contents / "MacOS");
    fs::create_directories(contents / "Resources");
    fs::create_directories(home);
    fs::copy_file(self, contents / "MacOS" / self.filename());

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *variable : {"HOME", "XDG_DATA_HOME", "CFFIXED_USER_HOME"})
        environment.insert(variable, QString::fromStdString(home.string()));
    environment.insert(kSituation, QString::fromStdString(situation.name));
    environment.insert(kRowsFile, QString::fromStdString(rowsFile.string()));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QString::fromStdString((contents / "MacOS" / self.filename()).string()), arguments);
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace

int runInBundles(int argc, char **argv, const std::vector<Situation> &situations)
{
    if (const QByteArray name = qgetenv(kSituation); !name.isEmpty())
        return runSituation(argc, argv, situations, name.toStdString());

    const QTemporaryDir directory;
    const fs::path root = directory.path().toStdString();
    const fs::path rowsFile = root / "rows";
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const bool asJson = takeJsonFlag(argc, argv);

    for (const Situation &situation : situations) {
        (asJson ? std::cerr : std::cout) << '\n' << situation.name << ":" << std::endl;
        if (!runCopy(root, situation, arguments, rowsFile)) {
            std::cerr << situation.name << ": did not come to its end\n";
            return EXIT_FAILURE;
        }
    }
    print(readRows(rowsFile), asJson);
    return EXIT_SUCCESS;
}

} // namespace bench
