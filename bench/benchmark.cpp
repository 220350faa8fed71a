#include "benchmark.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "bench_games.h"
#include "bench_process.h"
#include "child_report.h"
#include "copy_baseline.h"
#include "flush_cost.h"
#include "folder_size.h"
#include "game_series.h"
#include "game_table.h"
#include "median.h"
#include "report_table.h"
#include "run_tree.h"

namespace bench {

namespace {

// A run that did not do what it should: its figures would be meaningless.
class RunFailed : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

void Require(bool condition, const std::string& what)
{
    if (!condition)
        throw RunFailed(what);
}

bool SameFiles(const FolderSize& a, const FolderSize& b)
{
    return a.files == b.files && a.bytes == b.bytes;
}

void RequireBackupFilesGone(const RunTree& tree)
{
    for (const std::string& file : {tree.archivePath, tree.removalListPath, tree.recordPath, tree.draftPath})
        Require(FileSize(file) < 0, "uninstall left its backup file " + file);
}

class Benchmark {
public:
    explicit Benchmark(const BenchOptions& options) : options_(options), self_(SelfPath()) {}

    double IdlePeakBytes();
    GameSeries MeasureGame(const BenchGame& game);

private:
    std::string MakeCopySource(const BenchGame& game);
    void MeasureCopies(const BenchGame& game, const std::string& source, int run,
                       GameSeries& series);
    void MeasureEmptyFolder(const BenchGame& game, int run, GameSeries& series);
    void MeasureFullFolder(const BenchGame& game, int run, GameSeries& series);

    // Runs this program in a child mode; a measured child gets a report path appended.
    Sample RunChild(std::vector<std::string> args, bool measured);
    Sample Install(const BenchGame& game, const RunTree& tree);
    Sample Uninstall(const BenchGame& game, const RunTree& tree);
    void Fill(const BenchGame& game, const std::vector<std::string>& folders);
    RunTree FreshTree(const BenchGame& game, const std::string& operation, int run);
    Sample Copy(const std::string& source, const RunTree& tree);

    const BenchOptions& options_;
    std::string self_;
};

Sample Benchmark::RunChild(std::vector<std::string> args, bool measured)
{
    std::string reportPath = options_.workFolder + "/child-report.txt";
    std::filesystem::remove(reportPath);
    args.insert(args.begin(), self_);
    if (measured)
        args.push_back(reportPath);
    ProcessOutcome outcome = RunProcess(args);
    Require(outcome.exitCode == 0,
            "child '" + args[1] + "' ended with status " + std::to_string(outcome.exitCode));
    Sample sample;
    if (!measured)
        return sample;
    ChildReport report;
    Require(ReadReport(reportPath, report), "child '" + args[1] + "' left no report");
    sample.ms = report.ms;
    sample.peakBytes = report.peakBytes;
    return sample;
}

Sample Benchmark::Install(const BenchGame& game, const RunTree& tree)
{
    return RunChild({"install", game.key, tree.steamappsPath, tree.account}, true);
}

Sample Benchmark::Uninstall(const BenchGame& game, const RunTree& tree)
{
    return RunChild({"uninstall", game.key, tree.steamappsPath, tree.account}, true);
}

void Benchmark::Fill(const BenchGame& game, const std::vector<std::string>& folders)
{
    std::vector<std::string> args = {"fill", game.key};
    args.insert(args.end(), folders.begin(), folders.end());
    RunChild(args, false);
}

RunTree Benchmark::FreshTree(const BenchGame& game, const std::string& operation, int run)
{
    return MakeRunTree(options_.workFolder,
                       std::string(game.key) + "-" + operation + "-" + std::to_string(run),
                       *game.profile);
}

Sample Benchmark::Copy(const std::string& source, const RunTree& tree)
{
    ProcessOutcome outcome = CopyFolder(source, tree.contentFolder);
    Require(outcome.exitCode == 0, std::string(CopyToolName()) + " failed");
    return {outcome.wallMs};
}

double Benchmark::IdlePeakBytes()
{
    std::vector<long long> peaks;
    for (int run = 0; run < options_.runs; ++run)
        peaks.push_back(RunChild({"idle"}, true).peakBytes);
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
    Fill(game, sets);
    Require(SameFiles(MeasureFolder(tree.contentFolder), copied), "the full folders are not the payload's");
    series.copyFull.Add(Copy(source, tree));
    RemoveRunTree(tree);
}

void Benchmark::MeasureEmptyFolder(const BenchGame& game, int run, GameSeries& series)
{
    RunTree tree = FreshTree(game, "empty", run);
    series.installEmpty.Add(Install(game, tree));
    Require(SameFiles(MeasureFolder(tree.contentFolder), series.payload),
            "install into an empty folder wrote other files than the payload");
    Require(FileSize(tree.archivePath) == 4, "install into an empty folder backed something up");

    series.uninstallEmpty.Add(Uninstall(game, tree));
    Require(MeasureFolder(tree.contentFolder).files == 0, "uninstall left payload files");
    RequireBackupFilesGone(tree);
    RemoveRunTree(tree);
}

void Benchmark::MeasureFullFolder(const BenchGame& game, int run, GameSeries& series)
{
    RunTree tree = FreshTree(game, "full", run);
    Fill(game, {tree.contentFolder});
    FolderSize before = MeasureFolder(tree.contentFolder);
    Require(SameFiles(before, series.payload), "the full game folder is not the payload's");
    series.largestOverwritten = std::max(series.largestOverwritten, before.largest);

    series.installFull.Add(Install(game, tree));
    Require(SameFiles(MeasureFolder(tree.contentFolder), series.payload),
            "install into a full folder wrote other files than the payload");
    Require(FileSize(tree.archivePath) > static_cast<long long>(before.bytes),
            "install into a full folder did not back up every file");

    series.uninstallFull.Add(Uninstall(game, tree));
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
    // machine spreads over all of them instead of spoiling one.
    for (int run = 0; run < options_.runs; ++run) {
        MeasureCopies(game, copySource, run, series);
        MeasureEmptyFolder(game, run, series);
        MeasureFullFolder(game, run, series);
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
        "and counts (run - median start-up on an empty source) / %d per set.\n"
        "peak MB: the child's peak resident memory less an idle child's (%s); both first read\n"
        "every page of the payloads the program carries, so that those pages drop out.\n"
        "Targets: first install into an empty game folder, median within %.1fx of the copy into\n"
        "an empty folder; uninstall after an install into a full one, within %.1fx of the copy\n"
        "over a full folder; peak within the largest overwritten file + %.0f MB (1 MB = 2^20 bytes).\n",
        options.runs, options.workFolder.c_str(), CopyToolName(), options.copySets,
        options.copySets, PeakMethodName(), installLimit, uninstallLimit, budgetSlackMb);
}

}  // namespace

int RunBenchmark(const BenchOptions& options)
{
    PrintHeading(options);
    std::filesystem::create_directories(options.workFolder);
    int status = 0;
    try {
        Benchmark benchmark(options);
        double idlePeak = benchmark.IdlePeakBytes();
        std::printf("idle child's peak: %.2f MB\n", idlePeak / (1024.0 * 1024.0));
        bool met = true;
        if (!options.saveMedians.empty())
            std::remove(options.saveMedians.c_str());
        for (int index = 0; index < gameCount; ++index) {
            const BenchGame& game = GameAt(index);
            const GameSeries series = benchmark.MeasureGame(game);
            if (options.flushesOffAgainst.empty())
                met = PrintTable(GameTable(game, series, idlePeak)) && met;
            else
                Require(PrintFlushCost(options.flushesOffAgainst, game.key, series),
                        "no medians of " + std::string(game.key) + " in " + options.flushesOffAgainst);
            if (!options.saveMedians.empty())
                SaveMedians(options.saveMedians, game.key, series);
            std::fflush(stdout);
        }
        if (options.flushesOffAgainst.empty())
            std::printf("\n%s\n", met ? "All targets met." : "Some targets missed (OVER above).");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ludax_bench: %s\n", error.what());
        status = 1;
    }
    std::error_code ignored;
    std::filesystem::remove_all(options.workFolder, ignored);
    return status;
}

}  // namespace bench
