#pragma once

#include <benchmark/benchmark.h>

#include <QJsonObject>
#include <functional>
#include <string>
#include <vector>

/// Benchmarks in pairs: a subject of the library beside the peer that it is measured against, in one run.
///
/// A program declares its pairs with compare() and ends in run(). Every side has 21 short runs, the runs of all sides
/// shuffled among each other, so that what else goes on on the machine falls on subject and peer alike; medians are
/// compared. The bounds are figures, not assertions: a ratio out of bounds shows in the table and nowhere else.
///
/// With --json the program prints its rows as JSON, one in a line, and everything else to standard error. Arguments of
/// Google Benchmark are taken and come after our own, so that --benchmark_filter=REGEX does what it says. A pair of
/// which only one side ran is left out.
namespace bench {

/// A limit for the ratio of a pair.
struct Bound
{
    enum class Kind { timeAtMost, throughputAtLeast };
    Kind kind;
    double value;
};

/// The subject's time is at most `value` times the peer's.
constexpr Bound atMost(double value)
{
    return {Bound::Kind::timeAtMost, value};
}

/// The subject's throughput is at least `value` times the peer's.
constexpr Bound atLeast(double value)
{
    return {Bound::Kind::throughputAtLeast, value};
}

/// Which time counts: the processor time of the thread that runs the side; the time that passes, for what waits for
/// other threads; or what the side sets with State::SetIterationTime().
enum class Clock { processor, wall, manual };

/// One side of a pair. Sides of the same name are the same side, which runs once.
struct Side
{
    std::string name;
    std::function<void(benchmark::State &)> body;
};

/// Declares a pair.
void compare(const Side &subject, Bound bound, const Side &peer, Clock clock = Clock::processor);

/// What became of a pair.
struct Row
{
    std::string subject;
    std::string peer;
    double subjectMedian;
    double peerMedian;
    /// What the medians count: "ns", or a word like "bytes".
    std::string unit;
    Bound bound;

    /// The subject's share of the peer's time, or of its throughput.
    [[nodiscard]] double ratio() const;
    [[nodiscard]] bool holds() const;

    [[nodiscard]] QJsonObject toJson() const;
    static Row fromJson(const QJsonObject &json);
};

/// Whether the arguments have --json, which is taken out of them.
[[nodiscard]] bool takeJsonFlag(int &argc, char **argv);

/// Runs the declared pairs. Ends the process for arguments that are not understood. With `asJson`, standard output is
/// left to the rows.
[[nodiscard]] std::vector<Row> measure(int argc, char **argv, bool asJson);

/// Prints the rows to standard output, as a table or as JSON.
void print(const std::vector<Row> &rows, bool asJson);

/// The cells of a row, as the table shows them.
[[nodiscard]] std::vector<std::string> cellsOf(const Row &row);
[[nodiscard]] std::vector<std::string> headings();

/// Runs the declared pairs and prints their rows. Returns the process's exit status.
int run(int argc, char **argv);

} // namespace bench
