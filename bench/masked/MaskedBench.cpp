// A masked text against a literal of the same length, both returned as texts of their own.

#include "bench/masked/Literal.h"
#include "bench/support/Ratios.h"
#include "config/MaskedText_p.h"

namespace {

constexpr auto kMasked = masked::text(bench::kLiteral);

template <typename Text> bench::Side side(const std::string &name, Text text)
{
    return {name, [text](benchmark::State &state) {
                for (auto _ : state)
                    benchmark::DoNotOptimize(text());
            }};
}

} // namespace

int main(int argc, char **argv)
{
    const masked::View table[] = {kMasked};
    const masked::View *entry = table;
    benchmark::DoNotOptimize(entry);
    const bench::Side literal = side("literal, narrow", [] { return bench::literal(); });
    bench::compare(side("masked, 50 characters", [] { return kMasked.str(); }), bench::atMost(1.3), literal);
    bench::compare(side("masked, 50 characters, from a table", [entry] { return entry->str(); }), bench::atMost(1.3),
                   literal);
    bench::compare(side("masked, 50 characters, wide", [] { return kMasked.wstr(); }), bench::atMost(1.6), literal);
    return bench::run(argc, argv);
}
