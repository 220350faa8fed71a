#pragma once
// The uninstall over each of the worst removal lists (worst_removal_lists.h), after an install into
// a full game folder, held against worstListLimitMs.

#include "bench_games.h"
#include "benchmark.h"
#include "child_runner.h"

namespace bench {

// However long its removal list, within the 8 MB it reads of one, an uninstall takes at most this.
constexpr double worstListLimitMs = 2000;

// Prints the table; true when every list's uninstall met the limit.
bool MeasureWorstLists(ChildRunner& children, const BenchOptions& options, const BenchGame& game,
                       double idlePeakBytes);

}  // namespace bench
