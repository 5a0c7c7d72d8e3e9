// The configuration service against a QSettings that is kept open, single integer settings and a key of the registry
// against a QSettings that is opened for one value, to read it or to write it; all on files of the size that the
// product has.

#include "bench/support/Bundles.h"
#include "bench/support/Ratios.h"
#include "config/ConfigFileUtil.h"
#include "config/MacConfigPath.h"
#include "config/MacReg.h"
#include "config/ProductCfgUtil.h"
#include "config/QtVersion_p.h"
#include "paths/PathUtils.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <filesystem>
#include <fstream>
#include <thread>

namespace fs = std::filesystem;

namespace {

QString componentFile()
{
    return QString::fromStdString(MacConfigPath::GetInstance()->GetAppConfigPath("cfgdata/componentConfig.ini"));
}

void writeFile(const QString &path, const std::string &content)
{
    fs::create_directories(fs::path(path.toStdString()).parent_path());
    std::ofstream(path.toStdString()) << content;
}

std::string sections(int count)
{
    std::string content;
    for (int i = 0; i < count; ++i)
        content += "[section" + std::to_string(i) + "]\nname=value of this section\nnumber=" + std::to_string(i) + "\n";
    return content;
}

void getProductName(benchmark::State &state)
{
    const ProductCfgUtil &config = *SingleTon<ProductCfgUtil>::GetInstance();
    if (config.getProductName() != QLatin1String("Product"))
        state.SkipWithError("the file is not read");
    for (auto _ : state)
        benchmark::DoNotOptimize(config.getProductName());
}

void textOfOpenSettings(benchmark::State &state)
{
    QSettings settings(componentFile(), QSettings::IniFormat);
    qt::readAsUtf8(settings);
    const QString byDefault = QStringLiteral("PDF Orvell");
    for (auto _ : state)
        benchmark::DoNotOptimize(settings.value(QStringLiteral("product/product_name"), byDefault).toString());
}

void getVipId(benchmark::State &state)
{
    const ProductCfgUtil &config = *SingleTon<ProductCfgUtil>::GetInstance();
    for (auto _ : state)
        benchmark::DoNotOptimize(config.getVipId());
}

void numberOfOpenSettings(benchmark::State &state)
{
    const QSettings settings(componentFile(), QSettings::IniFormat);
    for (auto _ : state)
        benchmark::DoNotOptimize(settings.value(QStringLiteral("product/vip_id"), 13).toInt());
}

void getLocalValue(benchmark::State &state)
{
    const QString key = QStringLiteral("section5/number");
    if (ConfigFileUtil::GetLocalAppCfgValueInt(key, 7) != 5)
        state.SkipWithError("the file is not read");
    for (auto _ : state)
        benchmark::DoNotOptimize(ConfigFileUtil::GetLocalAppCfgValueInt(key, 7));
}

/// With the question for the path, and whether there is a file, which a reader of a user's file has to ask.
void settingsOpenedForOneValue(benchmark::State &state)
{
    const QString key = QStringLiteral("section5/number");
    for (auto _ : state) {
        const QString path = PathUtils::getAppConfigPath(false);
        if (!QFile::exists(path))
            state.SkipWithError("no file");
        const QSettings settings(path, QSettings::IniFormat);
        benchmark::DoNotOptimize(settings.value(key, 7).toInt());
    }
}

void readRegistry(benchmark::State &state)
{
    const QString key = QStringLiteral("common");
    const QString name = QStringLiteral("section5/number");
    for (auto _ : state) {
        MacReg registry;
        if (!registry.open(key, true) || registry.value(name, 7).toInt() != 5)
            state.SkipWithError("the key is not read");
    }
}

/// With what opening a key does besides: it asks for the path, whether folder and file are there, and says so.
void settingsOpenedForAKey(benchmark::State &state)
{
    const QString key = QStringLiteral("common");
    const QString name = QStringLiteral("section5/number");
    for (auto _ : state) {
        const QString folder = QString::fromStdString(MacConfigPath::GetInstance()->GetUserDataPath("reg/"));
        const QString path = folder + key + QStringLiteral(".ini");
        qInfo("registry = %s", qUtf8Printable(path));
        if (!QDir(folder).exists() || !QFile::exists(path))
            state.SkipWithError("no file");
        const QSettings settings(path, QSettings::IniFormat);
        benchmark::DoNotOptimize(settings.value(name, 7).toInt());
    }
}

void setValue(benchmark::State &state)
{
    const QString key = QStringLiteral("section5/number");
    int value = 0;
    for (auto _ : state)
        ConfigFileUtil::SetCfgdataFileValueIntUser(key, ++value % 90 + 10);
    if (ConfigFileUtil::GetCfgdataFileValueIntUser(key, 7) != value % 90 + 10)
        state.SkipWithError("the value is not written");
}

void settingsOpenedToWrite(benchmark::State &state)
{
    const QString key = QStringLiteral("section5/number");
    int value = 0;
    for (auto _ : state) {
        QSettings settings(PathUtils::getConfigDataPath() + QStringLiteral(".theirs"), QSettings::IniFormat);
        settings.setValue(key, ++value % 90 + 10);
    }
}

void declare()
{
    writeFile(componentFile(), "[product]\nproduct_name=Product\nvip_id=5\n" + sections(5));
    writeFile(PathUtils::getAppConfigPath(true), sections(20));
    writeFile(PathUtils::getAppDataDir(true) + "reg/common.ini", sections(20));
    writeFile(PathUtils::getConfigDataPath() + QStringLiteral(".user"), sections(20));
    writeFile(PathUtils::getConfigDataPath() + QStringLiteral(".theirs"), sections(20));
    std::this_thread::sleep_for(std::chrono::seconds(3)); // a file that changed just now is read again each time
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    bench::compare({"ProductCfgUtil, text", getProductName}, bench::atMost(1.5),
                   {"open QSettings, text", textOfOpenSettings});
    bench::compare({"ProductCfgUtil, number", getVipId}, bench::atMost(1.5),
                   {"open QSettings, number", numberOfOpenSettings});
    bench::compare({"ConfigFileUtil, one value", getLocalValue}, bench::atMost(0.5),
                   {"QSettings for one value", settingsOpenedForOneValue});
    bench::compare({"MacReg, one value", readRegistry}, bench::atMost(0.5),
                   {"QSettings for a key", settingsOpenedForAKey});
    bench::compare({"ConfigFileUtil, write", setValue}, bench::atMost(0.7),
                   {"QSettings, write", settingsOpenedToWrite});
}

} // namespace

int main(int argc, char **argv)
{
    return bench::runInBundles(argc, argv, {{"config", declare}});
}
