#pragma once
// Turns one game's measurements into its table: medians, ratios to the copy, memory budgets.

#include "bench_games.h"
#include "game_series.h"
#include "report_table.h"

namespace bench {

ReportTable GameTable(const BenchGame& game, const GameSeries& series, double idlePeakBytes);

}  // namespace bench
