#include "worst_list_bench.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "folder_size.h"
#include "median.h"
#include "removal_list.h"
#include "run_tree.h"
#include "worst_removal_lists.h"

namespace bench {

namespace {

// A run this far past the limit is stopped, and its list not run again: it says all there is
// to say, and a list whose cost grows with its length squared could run for an hour.
constexpr double stopAfterLimits = 10;

struct ListSeries {
    Series times;
    bool stopped = false;
};

// One run of list `index`: the game installed into a full folder, its removal list replaced by
// the list, and the uninstall timed. False when the run was stopped.
bool MeasureOnce(ChildRunner& children, const BenchOptions& options, const BenchGame& game, int index, int run,
                 ListSeries& series)
{
    RunTree tree = MakeRunTree(options.workFolder,
                               std::string(game.key) + "-list" + std::to_string(index) + "-" + std::to_string(run),
                               *game.profile);
    children.Fill(game, {tree.contentFolder});
    const FolderSize before = MeasureFolder(tree.contentFolder);
    children.Install(game, tree);
    Require(FileSize(tree.removalListPath) >= 0, "the install wrote no removal list");
    WriteWorstList(index, *game.profile, tree.removalListPath, linesFileLimit);
    Require(FileSize(tree.removalListPath) == static_cast<long long>(linesFileLimit),
            "the worst list is not as large as the uninstall reads");
    const std::optional<Sample> sample = children.RunWithin(
        {"uninstall", game.key, tree.steamappsPath, tree.account}, stopAfterLimits * worstListLimitMs);
    if (sample) {
        const FolderSize after = MeasureFolder(tree.contentFolder);
        Require(after.files == before.files && after.bytes == before.bytes,
                "the uninstall over a worst list did not restore the full folder");
        RequireBackupFilesGone(tree);
        series.times.Add(*sample);
    }
    RemoveRunTree(tree);
    return sample.has_value();
}

}  // namespace

bool MeasureWorstLists(ChildRunner& children, const BenchOptions& options, const BenchGame& game,
                       double idlePeakBytes)
{
    // Each list takes seconds a run, so fewer runs than the operations; the lists take turns.
    const int runs = (options.runs + 2) / 3;
    std::vector<ListSeries> lists(worstListCount);
    for (int run = 0; run < runs; ++run)
        for (int index = 0; index < worstListCount; ++index)
            if (!lists[index].stopped)
                lists[index].stopped = !MeasureOnce(children, options, game, index, run, lists[index]);

    std::printf("\n%s: uninstall after an install into a full folder, its removal list replaced by\n"
                "one of %llu bytes (as much as it reads), median of %d runs; target: at most %.0f ms\n",
                game.title, static_cast<unsigned long long>(linesFileLimit), runs, worstListLimitMs);
    std::printf("%-40s %9s %17s %8s %9s\n", "removal list", "median ms", "min..max ms", "peak MB", "target");
    bool met = true;
    for (int index = 0; index < worstListCount; ++index) {
        const ListSeries& list = lists[index];
        const std::vector<double>& ms = list.times.ms;
        char range[40] = "-", median[24], peak[16] = "-";
        if (list.stopped) {
            std::snprintf(median, sizeof median, "> %.0f", stopAfterLimits * worstListLimitMs);
        } else {
            std::snprintf(median, sizeof median, "%.1f", Median(ms));
            std::snprintf(range, sizeof range, "%.1f..%.1f", *std::min_element(ms.begin(), ms.end()),
                          *std::max_element(ms.begin(), ms.end()));
            std::snprintf(peak, sizeof peak, "%.2f", (Median(list.times.peaks) - idlePeakBytes) / (1024.0 * 1024.0));
        }
        const bool within = !list.stopped && Median(ms) <= worstListLimitMs;
        met = met && within;
        std::printf("%-40s %9s %17s %8s %9s\n", WorstListAt(index).name, median, range, peak,
                    within ? "PASS" : "MISSED");
    }
    for (int index = 0; index < worstListCount; ++index)
        std::printf("(%s: %s%s)\n", WorstListAt(index).name, WorstListAt(index).cost,
                    lists[index].stopped ? "; stopped after the first run passed the time shown" : "");
    return met;
}

}  // namespace bench
