#pragma once
// What the flushes cost: a run with them saves its medians, a run with them made no-ops (the
// whole run under eatmydata, see bench/run) sets its own beside those.

#include <string>

#include "game_series.h"

namespace bench {

// Appends the game's install and uninstall medians to `path`, a line each: game, operation, ms.
void SaveMedians(const std::string& path, const char* game, const GameSeries& series);

// Prints each operation's median from `path` (flushed) beside this run's (not flushed) and
// the difference; false when `path` holds no median of this game.
bool PrintFlushCost(const std::string& path, const char* game, const GameSeries& series);

}  // namespace bench
