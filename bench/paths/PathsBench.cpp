// Getters of paths that create nothing of their own, against the same text built by hand, with the looks at the disk
// that a getter owes: whether the diagnostic log is there, and whether the user data folder is.

#include "bench/support/Bundles.h"
#include "bench/support/Ratios.h"
#include "config/MacConfigPath.h"
#include "paths/MacPath.h"
#include "paths/PathUtils.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Looks { none, atLog, atLogAndFolder };

/// What stands before a name, as a caller would keep it.
struct Base
{
    std::string folder;
    Looks looks;
};

QString byHand(const Base &base, const std::string &logPath, const char *name)
{
    struct stat status;
    if (base.looks != Looks::none)
        benchmark::DoNotOptimize(::stat(logPath.c_str(), &status));
    if (base.looks == Looks::atLogAndFolder)
        benchmark::DoNotOptimize(::access(base.folder.c_str(), F_OK));
    return QString::fromStdString(base.folder) + QLatin1String(name);
}

void declare(const std::string &getterName, QString (*getter)(), const Base &base, const char *name)
{
    const std::string logPath = MacConfigPath::GetInstance()->GetLogPath();
    bench::compare({getterName,
                    [=](benchmark::State &state) {
                        if (getter() != byHand(base, logPath, name))
                            state.SkipWithError("another path");
                        for (auto _ : state)
                            benchmark::DoNotOptimize(getter());
                    }},
                   bench::atMost(2), {"by hand, " + getterName, [=](benchmark::State &state) {
                                          for (auto _ : state)
                                              benchmark::DoNotOptimize(byHand(base, logPath, name));
                                      }});
}

void declareAll()
{
    const MacConfigPath *paths = MacConfigPath::GetInstance();
    const Base userData = {paths->GetUserDataDir(), Looks::atLogAndFolder};
    declare("getAppHotKeyPath", PathUtils::getAppHotKeyPath, userData, "hotkey.ini");
    declare("getHighLightFastColorFilePath", PathUtils::getHighLightFastColorFilePath, userData,
            "highLightFastRecentColor.txt");
    declare("getConfigDataPath", PathUtils::getConfigDataPath, {paths->GetAppConfigDir(), Looks::atLog},
            "cfgdata/cfgdata.ini");
    declare("getChatAiPath", PathUtils::getChatAiPath, {MacPath::getAppDirPath(), Looks::none}, "chatai.exe");
}

} // namespace

int main(int argc, char **argv)
{
    return bench::runInBundles(argc, argv, {{"paths", declareAll}});
}
