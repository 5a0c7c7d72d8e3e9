#include "tools/inspect/Checks.h"

#include <algorithm>
#include <numeric>

namespace inspect {

namespace {

/// How many letters have to be put in, taken out or replaced to make one word of the other.
std::size_t distance(const std::string &a, const std::string &b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const char letter : a) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (letter == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string nearest(const std::string &word, const std::vector<std::string> &names)
{
    std::string best;
    std::size_t least = 2 + word.size() / 4;
    for (const std::string &name : names) {
        if (std::max(word.size(), name.size()) - std::min(word.size(), name.size()) >= least)
            continue;
        const std::size_t letters = distance(word, name);
        if (letters == 0)
            return {};
        if (letters < least) {
            least = letters;
            best = name;
        }
    }
    return best;
}

} // namespace inspect
