#pragma once
// Starting this program again in a child mode (child_modes.h) for each measured operation, on the
// trees run_tree.h lays out, and reading back what the child reports.

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench_games.h"
#include "game_series.h"
#include "run_tree.h"

namespace bench {

// A run that did not do what it should: its figures would be meaningless.
class RunFailed : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

void Require(bool condition, const std::string& what);

class ChildRunner {
public:
    explicit ChildRunner(std::string workFolder);

    // Runs a child to its end; a measured one gets a report path appended and its sample is what
    // it reported. Before a measured child the system writes back what earlier ones left, so that
    // none pays for another's writes.
    Sample Run(std::vector<std::string> args, bool measured, bool flushesOff = false);
    // A measured child stopped once it has run `limitMs`: then nothing.
    std::optional<Sample> RunWithin(std::vector<std::string> args, double limitMs);

    Sample Install(const BenchGame& game, const RunTree& tree, bool flushesOff = false);
    Sample Uninstall(const BenchGame& game, const RunTree& tree, bool flushesOff = false);
    // Fills each content folder with the game's files, every byte another (not measured).
    void Fill(const BenchGame& game, const std::vector<std::string>& folders);

    // False when the system could not be asked to write back before the measured children.
    bool WritesBack() const { return writesBack; }

private:
    std::optional<Sample> Start(std::vector<std::string> args, bool measured, bool flushesOff, double limitMs);

    std::string self, reportPath;
    bool writesBack = true;
};

// Fails unless the uninstall left none of the tree's backup files.
void RequireBackupFilesGone(const RunTree& tree);

}  // namespace bench
