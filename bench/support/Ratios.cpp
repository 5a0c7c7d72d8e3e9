#include "bench/support/Ratios.h"

#include <QJsonDocument>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <map>
#include <string_view>

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

std::string quantity(double value, const std::string &unit)
{
    if (unit != "ns")
        return formatted("%.0f ", value) + unit;
    if (value < 1e3)
        return formatted("%.1f ns", value);
    if (value < 1e6)
        return formatted("%.2f us", value / 1e3);
    return formatted("%.2f ms", value / 1e6);
}

} // namespace

double Row::ratio() const
{
    return bound.kind == Bound::Kind::timeAtMost ? subjectMedian / peerMedian : peerMedian / subjectMedian;
}

bool Row::holds() const
{
    return bound.kind == Bound::Kind::timeAtMost ? ratio() <= bound.value : ratio() >= bound.value;
}

QJsonObject Row::toJson() const
{
    return {{"subject", QString::fromStdString(subject)},
            {"peer", QString::fromStdString(peer)},
            {"subjectMedian", subjectMedian},
            {"peerMedian", peerMedian},
            {"unit", QString::fromStdString(unit)},
            {"ratio", ratio()},
            {bound.kind == Bound::Kind::timeAtMost ? "atMost" : "atLeast", bound.value},
            {"holds", holds()}};
}

Row Row::fromJson(const QJsonObject &json)
{
    const bool isAtMost = json.contains("atMost");
    return {json["subject"].toString().toStdString(),
            json["peer"].toString().toStdString(),
            json["subjectMedian"].toDouble(),
            json["peerMedian"].toDouble(),
            json["unit"].toString().toStdString(),
            isAtMost ? atMost(json["atMost"].toDouble()) : atLeast(json["atLeast"].toDouble())};
}

std::vector<std::string> headings()
{
    return {"subject", "peer", "its median", "peer's median", "ratio", "bound", "holds"};
}

std::vector<std::string> cellsOf(const Row &row)
{
    const bool isAtMost = row.bound.kind == Bound::Kind::timeAtMost;
    return {row.subject,
            row.peer,
            quantity(row.subjectMedian, row.unit),
            quantity(row.peerMedian, row.unit),
            formatted("%.3f", row.ratio()),
            formatted(isAtMost ? "at most %.2f" : "at least %.2f", row.bound.value),
            row.holds() ? "yes" : "NO"};
}

void compare(const Side &subject, Bound bound, const Side &peer, Clock clock)
{
    registerOnce(subject, clock);
    registerOnce(peer, clock);
    pairs().push_back({subject.name, peer.name, bound});
}

bool takeJsonFlag(int &argc, char **argv)
{
    char **const end = std::remove(argv + 1, argv + argc, std::string_view("--json"));
    const bool isThere = end != argv + argc;
    argc = static_cast<int>(end - argv);
    return isThere;
}

std::vector<Row> measure(int argc, char **argv, bool asJson)
{
    std::vector<std::string> defaults = {"--benchmark_repetitions=21", "--benchmark_min_time=0.02",
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
    if (asJson)
        reporter.SetOutputStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    std::vector<Row> rows;
    for (const Pair &pair : pairs()) {
        const auto subject = reporter.times().find(pair.subject);
        const auto peer = reporter.times().find(pair.peer);
        if (subject != reporter.times().end() && peer != reporter.times().end())
            rows.push_back({pair.subject, pair.peer, subject->second, peer->second, "ns", pair.bound});
    }
    return rows;
}

void print(const std::vector<Row> &rows, bool asJson)
{
    if (asJson) {
        for (const Row &row : rows)
            std::puts(QJsonDocument(row.toJson()).toJson(QJsonDocument::Compact).constData());
    } else if (!rows.empty()) {
        std::vector<std::vector<std::string>> lines = {headings()};
        std::transform(rows.begin(), rows.end(), std::back_inserter(lines), cellsOf);
        std::vector<std::size_t> widths(lines.front().size());
        for (const auto &line : lines)
            for (std::size_t column = 0; column < widths.size(); ++column)
                widths[column] = std::max(widths[column], line[column].size());
        std::putchar('\n');
        for (const auto &line : lines) {
            for (std::size_t column = 0; column < widths.size(); ++column)
                std::printf("%-*s  ", static_cast<int>(widths[column]), line[column].c_str());
            std::putchar('\n');
        }
    }
    std::fflush(stdout);
}

int run(int argc, char **argv)
{
    const bool asJson = takeJsonFlag(argc, argv);
    print(measure(argc, argv, asJson), asJson);
    return EXIT_SUCCESS;
}

} // namespace bench
