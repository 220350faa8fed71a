#include "game_table.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

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
    // The copies the operations are compared with, per set: the copy tool's into an empty folder
    // and over a full one, and the flushed copy over a full one (timed inside its child, so
    // nothing to subtract).
    struct Copy {
        const char* name;
        Series perSet;
        double median;
        double fastest;
    };
    const auto copyOf = [&](const char* name, const Series& whole) {
        const Series perSet = PerSet(whole, series.copyStartup, sets);
        return Copy{name, perSet, Median(perSet.ms), FastestPerSet(whole, series.copyStartup, sets)};
    };
    const Copy empty = copyOf("empty", series.copyEmpty), full = copyOf("full", series.copyFull);
    const Copy flushedFull{"flushed", series.flushedCopyFull, Median(series.flushedCopyFull.ms),
                           Min(series.flushedCopyFull.ms)};

    ReportTable table;
    char text[256];
    std::snprintf(text, sizeof text,
                  "%s: %d files, %.2f MB; container %.2f MB; largest overwritten file %.2f MB",
                  game.title, series.payload.files, series.payload.bytes / mb, containerMb,
                  largestMb);
    table.title = text;
    std::snprintf(text, sizeof text,
                  "copy = %s of %d sets a run; fastest copy %.1f ms a set into an empty folder, %.1f over a full one,\n"
                  " %.1f flushing each file; x copy = median / that copy's median, min x = fastest / fastest",
                  CopyToolName(), sets, empty.fastest, full.fastest, flushedFull.fastest);
    table.note = text;

    table.rows.push_back(Row("copy: start-up (empty source, whole)", series.copyStartup));
    // No peak for the copy tool: Wine cannot read an ended process's counters, and natively a
    // spawned child's ru_maxrss starts at the spawning process's size, larger than cp's own.
    for (const auto& [copy, name] : {std::pair{&empty, "copy into empty folder, per set"},
                                     std::pair{&full, "copy over full folder, per set"},
                                     std::pair{&flushedFull, "flushed copy over full folder"}}) {
        ReportRow row = Row(name, copy->perSet);
        row.copy = copy->name;
        row.ratioToCopy = Ratio(row.medianMs, copy->median);
        row.minRatioToCopy = Ratio(copy->fastest, copy->fastest);
        table.rows.push_back(row);
    }

    const struct {
        const char* name;
        const Series& series;
        const Copy& copy;
        double speedLimit;
        double overwrittenMb;
    } operations[] = {
        {"install into empty game folder", series.flushed.installEmpty, empty, installLimit, 0},
        {"install into full game folder", series.flushed.installFull, full, none, largestMb},
        {"uninstall after install into empty", series.flushed.uninstallEmpty, empty, none, 0},
        {"uninstall after install into full", series.flushed.uninstallFull, flushedFull, uninstallLimit, largestMb},
    };
    for (const auto& operation : operations) {
        ReportRow row = Row(operation.name, operation.series);
        row.copy = operation.copy.name;
        row.ratioToCopy = Ratio(row.medianMs, operation.copy.median);
        row.minRatioToCopy = Ratio(row.minMs, operation.copy.fastest);
        row.speedLimit = operation.speedLimit;
        row.peakMb = (Median(operation.series.peaks) - idlePeakBytes) / mb;
        row.budgetMb = operation.overwrittenMb + budgetSlackMb;
        table.rows.push_back(row);
    }
    return table;
}

}  // namespace bench
