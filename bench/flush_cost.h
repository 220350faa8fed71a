#pragma once
// What the flushes cost: each operation with its flushes beside the same operation with them made
// no-ops, the two run in turn within each run (benchmark.cpp), so that both see the machine alike.

#include "bench_games.h"
#include "game_series.h"

namespace bench {

// Prints the game's table: both medians, their difference, and the middle of the run-by-run
// differences. A negative cost is printed as measured.
void PrintFlushCost(const BenchGame& game, const GameSeries& series);

}  // namespace bench
