#include "benchmark.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "bench_games.h"
#include "bench_process.h"
#include "child_runner.h"
#include "copy_baseline.h"
#include "flush_cost.h"
#include "flushes_off.h"
#include "folder_size.h"
#include "game_series.h"
#include "game_table.h"
#include "median.h"
#include "report_table.h"
#include "run_tree.h"
#include "worst_list_bench.h"

namespace bench {

namespace {

bool SameFiles(const FolderSize& a, const FolderSize& b)
{
    return a.files == b.files && a.bytes == b.bytes;
}

class Benchmark {
public:
    Benchmark(const BenchOptions& options, ChildRunner& children) : options_(options), children_(children) {}

    double IdlePeakBytes();
    GameSeries MeasureGame(const BenchGame& game);

private:
    std::string MakeCopySource(const BenchGame& game);
    void MeasureCopies(const BenchGame& game, const std::string& source, int run, GameSeries& series);
    void MeasureEmptyFolder(const BenchGame& game, int run, bool flushesOff, GameSeries& series);
    void MeasureFullFolder(const BenchGame& game, int run, bool flushesOff, GameSeries& series);

    RunTree FreshTree(const BenchGame& game, const std::string& operation, int run);
    Sample Copy(const std::string& source, const RunTree& tree);

    const BenchOptions& options_;
    ChildRunner& children_;
};

RunTree Benchmark::FreshTree(const BenchGame& game, const std::string& operation, int run)
{
    return MakeRunTree(options_.workFolder,
                       std::string(game.key) + "-" + operation + "-" + std::to_string(run),
                       *game.profile);
}

Sample Benchmark::Copy(const std::string& source, const RunTree& tree)
{
    WriteBackEverything();
    ProcessOutcome outcome = CopyFolder(source, tree.contentFolder);
    Require(outcome.exitCode == 0, std::string(CopyToolName()) + " failed");
    return {outcome.wallMs};
}

double Benchmark::IdlePeakBytes()
{
    std::vector<long long> peaks;
    for (int run = 0; run < options_.runs; ++run)
        peaks.push_back(children_.Run({"idle"}, true).peakBytes);
    return Median(peaks);
}

// The copy tool's source: the game's set copySets times, in folders 0/, 1/, ...
std::string Benchmark::MakeCopySource(const BenchGame& game)
{
    const std::string source = options_.workFolder + "/" + game.key + "-copy-source";
    std::filesystem::create_directories(source);
    for (int set = 0; set < options_.copySets; ++set)
        std::filesystem::copy(options_.payloadRoot + "/" + game.key,
                              source + "/" + std::to_string(set),
                              std::filesystem::copy_options::recursive);
    return source;
}

void Benchmark::MeasureCopies(const BenchGame& game, const std::string& source, int run,
                              GameSeries& series)
{
    const std::string emptySource = options_.workFolder + "/empty-source";
    std::filesystem::create_directories(emptySource);
    FolderSize copied = series.payload;
    copied.files *= options_.copySets;
    copied.bytes *= options_.copySets;

    RunTree tree = FreshTree(game, "copy-startup", run);
    series.copyStartup.Add(Copy(emptySource, tree));
    RemoveRunTree(tree);

    tree = FreshTree(game, "copy-empty", run);
    series.copyEmpty.Add(Copy(source, tree));
    Require(SameFiles(MeasureFolder(tree.contentFolder), copied), "the copy is incomplete");
    RemoveRunTree(tree);

    tree = FreshTree(game, "copy-full", run);
    std::vector<std::string> sets;
    for (int set = 0; set < options_.copySets; ++set)
        sets.push_back(tree.contentFolder + std::to_string(set) + "/");
    children_.Fill(game, sets);
    Require(SameFiles(MeasureFolder(tree.contentFolder), copied), "the full folders are not the payload's");
    series.copyFull.Add(Copy(source, tree));
    RemoveRunTree(tree);

    tree = FreshTree(game, "copy-flushed", run);
    children_.Fill(game, {tree.contentFolder});
    const std::string set = options_.payloadRoot + "/" + game.key, folder = tree.contentFolder;
    series.flushedCopyFull.Add(children_.Run({"flushed-copy", set, folder.substr(0, folder.size() - 1)}, true));
    Require(SameFiles(MeasureFolder(tree.contentFolder), series.payload), "the flushed copy is incomplete");
    RemoveRunTree(tree);
}

void Benchmark::MeasureEmptyFolder(const BenchGame& game, int run, bool flushesOff, GameSeries& series)
{
    OperationSeries& operations = flushesOff ? series.unflushed : series.flushed;
    RunTree tree = FreshTree(game, flushesOff ? "empty-unflushed" : "empty", run);
    operations.installEmpty.Add(children_.Install(game, tree, flushesOff));
    Require(SameFiles(MeasureFolder(tree.contentFolder), series.payload),
            "install into an empty folder wrote other files than the payload");
    Require(FileSize(tree.archivePath) == 4, "install into an empty folder backed something up");

    operations.uninstallEmpty.Add(children_.Uninstall(game, tree, flushesOff));
    Require(MeasureFolder(tree.contentFolder).files == 0, "uninstall left payload files");
    RequireBackupFilesGone(tree);
    RemoveRunTree(tree);
}

void Benchmark::MeasureFullFolder(const BenchGame& game, int run, bool flushesOff, GameSeries& series)
{
    OperationSeries& operations = flushesOff ? series.unflushed : series.flushed;
    RunTree tree = FreshTree(game, flushesOff ? "full-unflushed" : "full", run);
    children_.Fill(game, {tree.contentFolder});
    FolderSize before = MeasureFolder(tree.contentFolder);
    Require(SameFiles(before, series.payload), "the full game folder is not the payload's");
    series.largestOverwritten = std::max(series.largestOverwritten, before.largest);

    operations.installFull.Add(children_.Install(game, tree, flushesOff));
    Require(SameFiles(MeasureFolder(tree.contentFolder), series.payload),
            "install into a full folder wrote other files than the payload");
    Require(FileSize(tree.archivePath) > static_cast<long long>(before.bytes),
            "install into a full folder did not back up every file");

    operations.uninstallFull.Add(children_.Uninstall(game, tree, flushesOff));
    Require(SameFiles(MeasureFolder(tree.contentFolder), before),
            "uninstall did not restore the full folder");
    RequireBackupFilesGone(tree);
    RemoveRunTree(tree);
}

GameSeries Benchmark::MeasureGame(const BenchGame& game)
{
    GameSeries series;
    series.payload = MeasureFolder(options_.payloadRoot + "/" + game.key);
    Require(series.payload.files > 0, "no payload files below " + options_.payloadRoot);
    series.copySets = options_.copySets;
    const std::string copySource = MakeCopySource(game);
    // Operations take turns within each run, so that a spell of load elsewhere on the
    // machine spreads over all of them instead of spoiling one; each runs with its flushes and
    // with them made no-ops one after the other, the first of the two in turn from run to run.
    for (int run = 0; run < options_.runs; ++run) {
        MeasureCopies(game, copySource, run, series);
        const bool offFirst = run % 2 == 1;
        for (bool flushesOff : {offFirst, !offFirst})
            MeasureEmptyFolder(game, run, flushesOff, series);
        for (bool flushesOff : {offFirst, !offFirst})
            MeasureFullFolder(game, run, flushesOff, series);
    }
    return series;
}

const char* BuildKind()
{
#if defined(__SANITIZE_ADDRESS__)
    return "built with AddressSanitizer: these figures are NOT representative";
#elif defined(NDEBUG)
    return "release build";
#else
    return "debug build: these figures are NOT representative";
#endif
}

void PrintHeading(const BenchOptions& options)
{
    std::printf("ludax_bench on %s, %s\n", PlatformName().c_str(), BuildKind());
    std::printf(
        "%d runs of each operation, each in fresh folders below %s.\n"
        "Installs and uninstalls run in a child process each, timed inside it (process start\n"
        "excluded). The copy is %s, timed from outside; each run copies %d sets side by side\n"
        "and counts (run - median start-up on an empty source) / %d per set. The flushed copy\n"
        "copies one set over a full folder in a child, timed inside it: each file created or\n"
        "emptied, written, flushed and closed in turn, as the uninstall must put each back.\n"
        "Before each timed operation and copy the system writes back what earlier ones left.\n"
        "Each operation also runs with every flush made a no-op, right before or after the same\n"
        "operation with its flushes, the order turning from run to run\n"
        "(flushes made no-ops: %s).\n"
        "peak MB: the child's peak resident memory less an idle child's\n"
        "(%s); both first read every page of the payloads the program\n"
        "carries, so that those pages drop out.\n"
        "Targets: first install into an empty game folder, median within %.1fx of the copy into\n"
        "an empty folder; uninstall after an install into a full one, within %.1fx of the flushed\n"
        "copy; peak within the largest overwritten file + %.0f MB (1 MB = 2^20 bytes); the uninstall\n"
        "over each of the worst removal lists, after the tables of both games, within %.0f ms.\n",
        options.runs, options.workFolder.c_str(), CopyToolName(), options.copySets, options.copySets,
        FlushesOffMethodName(), PeakMethodName(), installLimit, uninstallLimit, budgetSlackMb, worstListLimitMs);
}

}  // namespace

int RunBenchmark(const BenchOptions& options)
{
    PrintHeading(options);
    std::filesystem::create_directories(options.workFolder);
    int status = 0;
    try {
        ChildRunner children(options.workFolder);
        Benchmark benchmark(options, children);
        double idlePeak = benchmark.IdlePeakBytes();
        std::printf("idle child's peak: %.2f MB\n", idlePeak / (1024.0 * 1024.0));
        bool met = true;
        for (int index = 0; options.operations && index < gameCount; ++index) {
            const BenchGame& game = GameAt(index);
            const GameSeries series = benchmark.MeasureGame(game);
            met = PrintTable(GameTable(game, series, idlePeak)) && met;
            PrintFlushCost(game, series);
            std::fflush(stdout);
        }
        if (options.lists)
            met = MeasureWorstLists(children, options, GameAt(0), idlePeak) && met;
        if (!children.WritesBack())
            std::printf("\nThe system could not be asked to write back before each operation here.\n");
        std::printf("\n%s\n", met ? "All targets met." : "Some targets missed (OVER or MISSED above).");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ludax_bench: %s\n", error.what());
        status = 1;
    }
    std::error_code ignored;
    std::filesystem::remove_all(options.workFolder, ignored);
    return status;
}

}  // namespace bench
