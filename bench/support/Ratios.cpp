#include "bench/support/Ratios.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace bench {

namespace {

struct Pair
{
    std::string subject;
    std::string peer;
    Bound bound;
};

std::vector<Pair> &pairs()
{
    static std::vector<Pair> all;
    return all;
}

void registerOnce(const Side &side, Clock clock)
{
    const auto isSide = [&side](const Pair &pair) { return pair.subject == side.name || pair.peer == side.name; };
    if (std::any_of(pairs().begin(), pairs().end(), isSide))
        return;
    auto *registered = benchmark::RegisterBenchmark(side.name.c_str(), side.body);
    if (clock == Clock::wall)
        registered->UseRealTime();
    if (clock == Clock::manual)
        registered->UseManualTime();
}

/// The console output, and the times of each side.
class Reporter : public benchmark::ConsoleReporter
{
public:
    Reporter() : ConsoleReporter(OO_None) { }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        // Aggregates follow the runs that they are made of, so that the median stays; a single run has none.
        for (const Run &run : runs) {
            const bool counts = run.run_type == Run::RT_Iteration || run.aggregate_name == "median";
            if (counts && !run.error_occurred)
                m_times[run.run_name.function_name] = nanoseconds(run);
        }
        ConsoleReporter::ReportRuns(runs);
    }

    [[nodiscard]] const std::map<std::string, double> &times() const { return m_times; }

private:
    static double nanoseconds(const Run &run)
    {
        const bool processor = run.run_name.time_type.empty();
        const double time = processor ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime();
        return time / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e9;
    }

    std::map<std::string, double> m_times;
};

std::string formatted(const char *format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string timeText(double nanoseconds)
{
    if (nanoseconds < 1e3)
        return formatted("%.1f ns", nanoseconds);
    if (nanoseconds < 1e6)
        return formatted("%.2f us", nanoseconds / 1e3);
    return formatted("%.2f ms", nanoseconds / 1e6);
}

Row rowOf(const Pair &pair, double subject, double peer)
{
    const bool atMost = pair.bound.kind == Bound::Kind::timeAtMost;
    const double ratio = atMost ? subject / peer : peer / subject;
    const bool holds = atMost ? ratio <= pair.bound.value : ratio >= pair.bound.value;
    return {pair.subject,
            pair.peer,
            timeText(subject),
            timeText(peer),
            formatted("%.3f", ratio),
            formatted(atMost ? "at most %.2f" : "at least %.2f", pair.bound.value),
            holds ? "yes" : "NO"};
}

} // namespace

void compare(const Side &subject, Bound bound, const Side &peer, Clock clock)
{
    registerOnce(subject, clock);
    registerOnce(peer, clock);
    pairs().push_back({subject.name, peer.name, bound});
}

std::vector<Row> measure(int argc, char **argv)
{
    std::vector<std::string> defaults = {"--benchmark_repetitions=5", "--benchmark_min_time=0.1",
                                         "--benchmark_enable_random_interleaving=true",
                                         "--benchmark_display_aggregates_only=true"};
    std::vector<char *> arguments = {argv[0]};
    for (std::string &argument : defaults)
        arguments.push_back(argument.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);

    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        std::exit(EXIT_FAILURE);
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    std::vector<Row> rows;
    for (const Pair &pair : pairs()) {
        const auto subject = reporter.times().find(pair.subject);
        const auto peer = reporter.times().find(pair.peer);
        if (subject != reporter.times().end() && peer != reporter.times().end())
            rows.push_back(rowOf(pair, subject->second, peer->second));
    }
    return rows;
}

void print(std::vector<Row> rows)
{
    if (rows.empty())
        return;
    rows.insert(rows.begin(), {"subject", "peer", "its median", "peer's median", "ratio", "bound", "holds"});
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row &row : rows)
        for (std::size_t column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    std::putchar('\n');
    for (const Row &row : rows) {
        for (std::size_t column = 0; column < widths.size(); ++column)
            std::printf("%-*s  ", static_cast<int>(widths[column]), row[column].c_str());
        std::putchar('\n');
    }
    std::fflush(stdout);
}

int run(int argc, char **argv)
{
    print(measure(argc, argv));
    return EXIT_SUCCESS;
}

} // namespace bench
