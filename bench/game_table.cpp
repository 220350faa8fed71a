#include "game_table.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "copy_baseline.h"
#include "median.h"

namespace bench {

namespace {

constexpr double mb = 1024.0 * 1024.0;

double Min(const std::vector<double>& values) { return *std::min_element(values.begin(), values.end()); }
double Max(const std::vector<double>& values) { return *std::max_element(values.begin(), values.end()); }

// A copy-tool run's own work per set: the whole run less the tool's start-up on an empty
// source, shared among the sets it copied, so that it compares with the operations timed
// inside their process.
Series PerSet(const Series& whole, const Series& startup, int sets)
{
    Series perSet = whole;
    double startupMs = Median(startup.ms);
    for (double& ms : perSet.ms)
        ms = (ms - startupMs) / sets;
    return perSet;
}

// The same from the fastest runs alone, which other load on the machine disturbs least.
double FastestPerSet(const Series& whole, const Series& startup, int sets)
{
    return (Min(whole.ms) - Min(startup.ms)) / sets;
}

double Ratio(double time, double reference) { return reference > 0 ? time / reference : none; }

ReportRow Row(const std::string& operation, const Series& series)
{
    ReportRow row;
    row.operation = operation;
    row.medianMs = Median(series.ms);
    row.minMs = Min(series.ms);
    row.maxMs = Max(series.ms);
    return row;
}

}  // namespace

ReportTable GameTable(const BenchGame& game, const GameSeries& series, double idlePeakBytes)
{
    const double containerMb = game.profile->payload->length / mb;
    const double largestMb = series.largestOverwritten / mb;
    const int sets = series.copySets;
    const Series copy = PerSet(series.copyEmpty, series.copyStartup, sets);
    const double copyMedian = Median(copy.ms);
    const double copyFastest = FastestPerSet(series.copyEmpty, series.copyStartup, sets);

    ReportTable table;
    char text[256];
    std::snprintf(text, sizeof text,
                  "%s: %d files, %.2f MB; container %.2f MB; largest overwritten file %.2f MB",
                  game.title, series.payload.files, series.payload.bytes / mb, containerMb,
                  largestMb);
    table.title = text;
    std::snprintf(text, sizeof text, "copy = %s of %d sets a run; fastest copy %.1f ms a set",
                  CopyToolName(), sets, copyFastest);
    table.note = text;

    table.rows.push_back(Row("copy: start-up (empty source, whole)", series.copyStartup));
    const struct {
        const char* name;
        Series perSet;
        double fastest;
    } copies[] = {
        {"copy into empty folder, per set", copy, copyFastest},
        {"copy over full folder, per set", PerSet(series.copyFull, series.copyStartup, sets),
         FastestPerSet(series.copyFull, series.copyStartup, sets)},
    };
    // No peak for the copy tool: Wine cannot read an ended process's counters, and natively a
    // spawned child's ru_maxrss starts at the spawning process's size, larger than cp's own.
    for (const auto& each : copies) {
        ReportRow row = Row(each.name, each.perSet);
        row.ratioToCopy = Ratio(row.medianMs, copyMedian);
        row.minRatioToCopy = Ratio(each.fastest, copyFastest);
        table.rows.push_back(row);
    }

    const struct {
        const char* name;
        const Series& series;
        bool speedTarget;
        double overwrittenMb;
    } operations[] = {
        {"install into empty game folder", series.installEmpty, true, 0},
        {"install into full game folder", series.installFull, false, largestMb},
        {"uninstall after install into empty", series.uninstallEmpty, false, 0},
        {"uninstall after install into full", series.uninstallFull, false, largestMb},
    };
    for (const auto& operation : operations) {
        ReportRow row = Row(operation.name, operation.series);
        row.ratioToCopy = Ratio(row.medianMs, copyMedian);
        row.minRatioToCopy = Ratio(row.minMs, copyFastest);
        row.speedTarget = operation.speedTarget;
        row.peakMb = (Median(operation.series.peaks) - idlePeakBytes) / mb;
        row.budgetMb = operation.overwrittenMb + budgetSlackMb;
        table.rows.push_back(row);
    }
    return table;
}

}  // namespace bench
