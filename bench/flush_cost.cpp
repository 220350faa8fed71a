#include "flush_cost.h"

#include <cstdio>
#include <vector>

#include "median.h"

namespace bench {

namespace {

struct Operation {
    const char* name;
    Series OperationSeries::*series;
};

const Operation operations[] = {
    {"install into empty game folder", &OperationSeries::installEmpty},
    {"install into full game folder", &OperationSeries::installFull},
    {"uninstall after install into empty", &OperationSeries::uninstallEmpty},
    {"uninstall after install into full", &OperationSeries::uninstallFull},
};

}  // namespace

void PrintFlushCost(const BenchGame& game, const GameSeries& series)
{
    std::printf("\n%s: what the flushes cost (ms; each run measures both, one after the other)\n", game.title);
    std::printf("%-36s %8s %9s %17s %15s\n", "operation", "flushed", "no-ops", "cost of medians", "cost run by run");
    for (const Operation& operation : operations) {
        const std::vector<double>& with = (series.flushed.*operation.series).ms;
        const std::vector<double>& without = (series.unflushed.*operation.series).ms;
        std::vector<double> differences;
        for (std::size_t run = 0; run < with.size() && run < without.size(); ++run)
            differences.push_back(with[run] - without[run]);
        const double flushed = Median(with), unflushed = Median(without);
        char cost[32];
        std::snprintf(cost, sizeof cost, "%+.1f (%+.0f %%)", flushed - unflushed,
                      flushed > 0 ? 100 * (flushed - unflushed) / flushed : 0.0);
        std::printf("%-36s %8.1f %9.1f %17s %+15.1f\n", operation.name, flushed, unflushed, cost, Median(differences));
    }
}

}  // namespace bench
