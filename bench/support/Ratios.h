#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

/// Benchmarks in pairs: a subject of the library beside the peer that it is measured against, in one run.
///
/// A program declares its pairs with compare() and ends in run(). Every side runs five times, the runs of all sides
/// shuffled among each other, so that what else goes on on the machine falls on subject and peer alike; medians are
/// compared. The bounds are figures, not assertions: a ratio out of bounds shows in the table and nowhere else.
///
/// Arguments of Google Benchmark are taken and come after our own, so that --benchmark_filter=REGEX does what it says.
/// On a busy machine, many short runs tell more than five: --benchmark_repetitions=41 --benchmark_min_time=0.03. A pair
/// of which only one side ran is left out of the table.
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

/// What became of a pair: the cells of its row in the table.
using Row = std::vector<std::string>;

/// Runs the declared pairs. Ends the process for arguments that are not understood.
[[nodiscard]] std::vector<Row> measure(int argc, char **argv);

/// Prints the table to standard output; nothing for no rows.
void print(std::vector<Row> rows);

/// Runs the declared pairs and prints their table. Returns the process's exit status.
int run(int argc, char **argv);

} // namespace bench
