#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// An installation that some pairs are measured in.
///
/// The library reads its installation once per process. A program whose subjects depend on it therefore runs itself
/// again, once per situation: as a copy inside a made-up bundle in a temporary folder, with a home folder of its own.
struct Situation
{
    /// One word; names the bundle.
    std::string name;
    /// Writes the installation's files and declares the pairs. Called in the situation's process before anything else
    /// of the library, so that the library's own getters (GetDatPath() and the like) say where the files belong.
    std::function<void()> declare;
};

/// Runs every situation in its process and prints one table for all of them. Arguments are those of run(). Returns the
/// exit status: failure when a process did not come to its end.
int runInBundles(int argc, char **argv, const std::vector<Situation> &situations);

} // namespace bench
