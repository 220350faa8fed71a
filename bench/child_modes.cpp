#include "child_modes.h"

#include <chrono>
#include <cstdio>

#include "bench_games.h"
#include "bench_process.h"
#include "child_report.h"
#include "embedded.h"
#include "flushed_copy.h"
#include "flushes_off.h"
#include "full_game_folder.h"
#include "install.h"
#include "steam_layouts.h"
#include "uninstall.h"

namespace bench {

namespace {

// Reads a byte of every page of both payloads, in the idle child as in the measured ones, so
// that the program's own pages count alike in both and drop out of the difference.
void TouchPayloads()
{
    volatile char sum = 0;
    for (const EmbeddedContainer* payload : {&cs16Payload, &cssPayload})
        for (std::size_t at = 0; at < payload->length; at += 4096)
            sum = sum + payload->start[at];
}

int Usage()
{
    std::fprintf(stderr, "ludax_bench: bad child arguments\n");
    return 2;
}

int RunOperation(const std::vector<std::string>& args)
{
    if (args.size() != 5)
        return Usage();
    const BenchGame* game = FindGame(args[1]);
    if (!game)
        return Usage();
    bool install = args[0] == "install";
    SteamAccount account = AccountFolderEntry(args[2], args[3]);
    // A first install, and an uninstall of an installed game: the window's own preconditions.
    account.Game(game->profile->id).installed = !install;

    TouchPayloads();
    auto start = std::chrono::steady_clock::now();
    const bool done = install ? InstallConfig(*game->profile, account).result == InstallOutcome::Result::installed
                              : !UninstallConfig(*game->profile, account).backupKept;
    auto end = std::chrono::steady_clock::now();
    if (!done) {
        std::fprintf(stderr, "ludax_bench: the %s did not finish\n", args[0].c_str());
        return 1;
    }

    ChildReport report;
    report.ms = std::chrono::duration<double, std::milli>(end - start).count();
    report.peakBytes = OwnPeakBytes();
    WriteReport(args[4], report);
    return 0;
}

int RunFlushedCopy(const std::vector<std::string>& args)
{
    if (args.size() != 4)
        return Usage();
    auto start = std::chrono::steady_clock::now();
    const bool copied = CopyFlushingEachFile(args[1], args[2]);
    auto end = std::chrono::steady_clock::now();
    if (!copied) {
        std::fprintf(stderr, "ludax_bench: the flushed copy failed\n");
        return 1;
    }
    ChildReport report;
    report.ms = std::chrono::duration<double, std::milli>(end - start).count();
    WriteReport(args[3], report);
    return 0;
}

}  // namespace

bool IsChildMode(const std::string& mode)
{
    return mode == "idle" || mode == "install" || mode == "uninstall" || mode == "flushed-copy" || mode == "fill";
}

int RunChildMode(const std::vector<std::string>& args)
{
    const std::string& mode = args[0];
    const bool flushesOff = FlushesOffAsked();
    if (!SetUpFlushes(flushesOff)) {
        std::fprintf(stderr, "ludax_bench: cannot make this child's flushes %s\n",
                     flushesOff ? "no-ops (is eatmydata installed?)" : "reach the system (run without eatmydata)");
        return 3;
    }
    if (mode == "flushed-copy")
        return RunFlushedCopy(args);
    if (mode == "idle") {
        if (args.size() != 2)
            return Usage();
        TouchPayloads();
        ChildReport report;
        report.peakBytes = OwnPeakBytes();
        WriteReport(args[1], report);
        return 0;
    }
    if (mode == "fill") {
        const BenchGame* game = args.size() >= 3 ? FindGame(args[1]) : nullptr;
        if (!game)
            return Usage();
        for (std::size_t i = 2; i < args.size(); ++i)
            FillWithOtherBytes(*game->profile->payload, args[i]);
        return 0;
    }
    return RunOperation(args);
}

}  // namespace bench
