#include "child_runner.h"

#include <filesystem>

#include "bench_process.h"
#include "child_report.h"
#include "folder_size.h"

namespace bench {

void Require(bool condition, const std::string& what)
{
    if (!condition)
        throw RunFailed(what);
}

ChildRunner::ChildRunner(std::string workFolder)
    : self(SelfPath()), reportPath(std::move(workFolder) + "/child-report.txt")
{
}

std::optional<Sample> ChildRunner::Start(std::vector<std::string> args, bool measured, bool flushesOff,
                                         double limitMs)
{
    std::filesystem::remove(reportPath);
    args.insert(args.begin(), self);
    if (measured) {
        args.push_back(reportPath);
        writesBack = WriteBackEverything() && writesBack;
    }
    ProcessOptions options;
    options.flushesOff = flushesOff;
    options.limitMs = limitMs;
    const ProcessOutcome outcome = RunProcess(args, options);
    if (outcome.stopped)
        return std::nullopt;
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

Sample ChildRunner::Run(std::vector<std::string> args, bool measured, bool flushesOff)
{
    return *Start(std::move(args), measured, flushesOff, 0);
}

std::optional<Sample> ChildRunner::RunWithin(std::vector<std::string> args, double limitMs)
{
    return Start(std::move(args), true, false, limitMs);
}

Sample ChildRunner::Install(const BenchGame& game, const RunTree& tree, bool flushesOff)
{
    return Run({"install", game.key, tree.steamappsPath, tree.account}, true, flushesOff);
}

Sample ChildRunner::Uninstall(const BenchGame& game, const RunTree& tree, bool flushesOff)
{
    return Run({"uninstall", game.key, tree.steamappsPath, tree.account}, true, flushesOff);
}

void ChildRunner::Fill(const BenchGame& game, const std::vector<std::string>& folders)
{
    std::vector<std::string> args = {"fill", game.key};
    args.insert(args.end(), folders.begin(), folders.end());
    Run(args, false);
}

void RequireBackupFilesGone(const RunTree& tree)
{
    for (const std::string& file : {tree.archivePath, tree.removalListPath, tree.recordPath, tree.draftPath})
        Require(FileSize(file) < 0, "uninstall left its backup file " + file);
}

}  // namespace bench
