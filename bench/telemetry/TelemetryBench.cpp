// Queueing telemetry records from four producers while the thread reports them to the disk, against queueing them while
// nothing is reported: no producer waits for a report. Every record is looked for in the spool afterwards.

#include "bench/support/Ratios.h"
#include "runtime/TelemThread.h"
#include "vipsdk/include/VipTelemData.h"

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

namespace {

using Time = std::chrono::steady_clock;
using Records = std::vector<VipTelemData *>;

constexpr int kProducers = 4;
constexpr int kRecords = 500;

/// Adds records that were made before from all producers at once; the time until the last one is done.
double add(TelemThread &queue)
{
    std::vector<Records> records(kProducers);
    for (Records &own : records)
        for (int i = 0; i < kRecords; ++i)
            own.push_back(new VipTelemData(L"benchmark"));
    const Time::time_point start = Time::now();
    std::vector<std::thread> producers;
    for (const Records &own : records)
        producers.emplace_back(
            [&] { std::for_each(own.begin(), own.end(), [&](auto *record) { queue.add(record); }); });
    for (std::thread &producer : producers)
        producer.join();
    return std::chrono::duration<double>(Time::now() - start).count();
}

std::ptrdiff_t countLines(const std::string &path)
{
    std::ifstream file(path);
    return std::count(std::istreambuf_iterator<char>(file), {}, '\n');
}

void addWhileReporting(benchmark::State &state)
{
    const QTemporaryDir folder;
    qputenv("ONDVIPSDK_DATA_DIR", folder.path().toUtf8());
    TelemThread queue;
    queue.start();
    for (auto _ : state)
        state.SetIterationTime(add(queue));
    while (!queue.isListEmpty())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    queue.stopThread();
    const auto added = static_cast<std::ptrdiff_t>(state.iterations()) * kProducers * kRecords;
    if (countLines(folder.filePath("telemetry.jsonl").toStdString()) != added)
        state.SkipWithError("records were lost");
}

void addWhileIdle(benchmark::State &state)
{
    TelemThread queue;
    for (auto _ : state)
        state.SetIterationTime(add(queue));
}

} // namespace

int main(int argc, char **argv)
{
    bench::compare({"TelemThread::add, reports under way", addWhileReporting}, bench::atMost(2),
                   {"TelemThread::add, no reports", addWhileIdle}, bench::Clock::manual);
    return bench::run(argc, argv);
}
