#pragma once
// The benchmark proper: every operation of both games, measured and tabled.

#include <string>

namespace bench {

struct BenchOptions {
    int runs = 9;
    // Sets one copy-tool run copies, side by side: the tool's start-up varies by more than
    // copying one set takes (under Wine), so each run copies several and counts per set.
    int copySets = 8;
    std::string workFolder;   // fresh run folders go below it; removed at the end
    std::string payloadRoot;  // holds cs16/ and css/, the sets the containers are packed from
    // What it measures: the operations of both games against the copies, and the uninstall over
    // the worst removal lists (worst_removal_lists.h).
    bool operations = true, lists = true;
};

// Returns the process exit status: 0 when every run did what it should (targets may be missed).
int RunBenchmark(const BenchOptions& options);

}  // namespace bench
