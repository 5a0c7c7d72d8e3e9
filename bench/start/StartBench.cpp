// A process from its start, over its first answers, to its end, beside one that links the same Qt libraries: the time
// it computes, the pages it touches, and the most memory it has at once. Both run in a bundle of their own.

#include "bench/support/Ratios.h"
#include "config/MacConfigPath.h"

#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr int kRepetitions = 21;
constexpr int kProcesses = 10; // per repetition: the system's clock for a single one is coarse

/// What one process takes.
struct Cost
{
    double userTime = 0;
    double pageFaults = 0;
    double memory = 0;
};

Cost costOf(const fs::path &program)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
        ::execl(program.c_str(), program.c_str(), nullptr);
        ::_exit(127);
    }
    int status = -1;
    rusage usage{};
    if (::wait4(child, &status, 0, &usage) != child || status != 0) {
        std::cerr << program << " did not come to its end\n";
        std::exit(EXIT_FAILURE);
    }
#ifdef __APPLE__
    constexpr double unit = 1.0 / 1024;
#else
    constexpr double unit = 1;
#endif
    return {static_cast<double>(usage.ru_utime.tv_sec) * 1e9 + static_cast<double>(usage.ru_utime.tv_usec) * 1e3,
            static_cast<double>(usage.ru_minflt + usage.ru_majflt), static_cast<double>(usage.ru_maxrss) * unit};
}

Cost meanCostOf(const fs::path &program)
{
    Cost mean;
    for (int i = 0; i < kProcesses; ++i) {
        const Cost cost = costOf(program);
        mean.userTime += cost.userTime / kProcesses;
        mean.pageFaults += cost.pageFaults / kProcesses;
        mean.memory += cost.memory / kProcesses;
    }
    return mean;
}

double median(const std::array<Cost, kRepetitions> &costs, double Cost::*what)
{
    std::array<double, kRepetitions> values{};
    std::transform(costs.begin(), costs.end(), values.begin(), [what](const Cost &cost) { return cost.*what; });
    std::nth_element(values.begin(), values.begin() + kRepetitions / 2, values.end());
    return values[kRepetitions / 2];
}

} // namespace

int main(int argc, char **argv)
{
    const bool asJson = bench::takeJsonFlag(argc, argv);
    const QTemporaryDir directory;
    const fs::path contents = fs::path(directory.path().toStdString()) / "Start.app" / "Contents";
    const fs::path programs = fs::path(MacConfigPath::GetCurrentExePath()).parent_path() / "start";
    fs::create_directories(contents / "MacOS");
    fs::create_directories(contents / "Resources");
    ::setenv("HOME", directory.path().toLocal8Bit().constData(), 1);
    for (const char *name : {"places", "empty"})
        fs::copy_file(programs / name, contents / "MacOS" / name);

    std::array<Cost, kRepetitions> subject, peer;
    for (int i = 0; i < kRepetitions; ++i) {
        subject[i] = meanCostOf(contents / "MacOS" / "places");
        peer[i] = meanCostOf(contents / "MacOS" / "empty");
    }
    const std::tuple<const char *, double Cost::*, const char *> rows[] = {{"user time", &Cost::userTime, "ns"},
                                                                           {"page faults", &Cost::pageFaults, "faults"},
                                                                           {"memory", &Cost::memory, "KiB"}};
    std::vector<bench::Row> all;
    for (const auto &[name, what, unit] : rows)
        all.push_back({std::string("process that asks for places, ") + name,
                       std::string("process with the same Qt, ") + name, median(subject, what), median(peer, what),
                       unit, bench::atMost(1.15)});
    bench::print(all, asJson);
}
