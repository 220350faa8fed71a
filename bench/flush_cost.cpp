#include "flush_cost.h"

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>

#include "median.h"

namespace bench {
namespace {

struct Operation {
    const char* name;
    const Series GameSeries::*series;
};

const Operation operations[] = {
    {"install into empty game folder", &GameSeries::installEmpty},
    {"install into full game folder", &GameSeries::installFull},
    {"uninstall after install into empty", &GameSeries::uninstallEmpty},
    {"uninstall after install into full", &GameSeries::uninstallFull},
};

}  // namespace

void SaveMedians(const std::string& path, const char* game, const GameSeries& series)
{
    std::ofstream out(path, std::ios::app);
    for (const Operation& operation : operations)
        out << game << '\t' << operation.name << '\t' << Median((series.*operation.series).ms) << '\n';
}

bool PrintFlushCost(const std::string& path, const char* game, const GameSeries& series)
{
    std::map<std::string, double> flushed;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        std::string key, name, ms;
        if (std::getline(fields, key, '\t') && std::getline(fields, name, '\t') && std::getline(fields, ms) &&
            key == game)
            flushed[name] = std::stod(ms);
    }
    if (flushed.empty())
        return false;
    std::printf("\n%s: what the flushes cost (median ms)\n\n", game);
    std::printf("| operation | flushed | flushes made no-ops | the flushes |\n|---|---|---|---|\n");
    for (const Operation& operation : operations) {
        const double with = flushed[operation.name], without = Median((series.*operation.series).ms);
        std::printf("| %s | %.1f | %.1f | %+.1f (%.0f %%) |\n", operation.name, with, without, with - without,
                    with > 0 ? 100 * (with - without) / with : 0.0);
    }
    return true;
}

}  // namespace bench
