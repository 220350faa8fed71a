// Nothing of the player's is lost and nothing of ours left behind, whichever call into the
// operating system fails or is the last before the process ends: the OS layer's POSIX body
// fails, or ends the process at, the Nth call of a first install and of an uninstall, for every
// N. Then the player does what the program offers: the install again (answering Yes) and the
// uninstall, or just the uninstall. Either way the Steam folder must end exactly as it was.
#ifndef _WIN32
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <functional>

#include "fault_injection.h"
#include "install_scene.h"

namespace {

using sys::faults::Mode;

// A game folder holding some of the payload's targets, files of the player's own and an empty
// folder of theirs, with folders the payload needs missing.
void PlayersGame(InstallScene& scene)
{
    WriteFile(scene.content + "a.txt", "the player's a.txt");
    WriteFile(scene.content + "cfg/config.cfg", std::string("the player's config\0\xFF", 21));
    WriteFile(scene.content + "cfg/own.cfg", "the player's own");
    MakeFolders(scene.content + "maps");
}

struct Tally {
    std::uint64_t calls = 0;  // calls into the OS layer when nothing fails
    std::uint64_t lostBytes = 0;  // of the player's files: missing, or not as they were
    int leftBehind = 0;       // entries that were not there before
};

void Compare(const Tree& before, const Tree& after, Tally& tally, const std::string& what)
{
    for (const auto& [path, bytes] : before) {
        const auto now = after.find(path);
        if (now == after.end() || now->second != bytes) {
            tally.lostBytes += bytes.size() + 1;
            ADD_FAILURE() << what << ": lost or changed " << path;
        }
    }
    for (const auto& [path, bytes] : after)
        if (!before.count(path)) {
            ++tally.leftBehind;
            ADD_FAILURE() << what << ": left behind " << path;
        }
}

// One operation under faults: it returns what it could not do and why (nothing when it says it
// finished), and `keeps` tells whether what "finished" promises holds.
struct Operation {
    std::function<sys::Failure(InstallScene&)> run;
    std::function<bool(InstallScene&, const Tree& before)> keeps;
};

// "Installed" promises every file of the set as shipped.
const Operation install{
    [](InstallScene& scene) {
        const InstallOutcome outcome = scene.Install();
        return outcome.result == InstallOutcome::Result::installed ? sys::Failure()
                                                                   : sys::Failure{outcome.path, outcome.reason};
    },
    [](InstallScene& scene, const Tree&) { return scene.PayloadWritten(); }};

// "Uninstalled" promises the Steam folder as it was before the first install; "kept" names why.
const Operation uninstall{
    [](InstallScene& scene) {
        const UninstallOutcome outcome = scene.Uninstall();
        EXPECT_EQ(outcome.backupKept, outcome.firstFailure.Failed());
        return outcome.firstFailure;
    },
    [](InstallScene& scene, const Tree& before) { return Snapshot(scene.steam.Path()) == before; }};

// Runs `operation` with call `nth` failing, or in a child process ended at call `nth`.
void Inject(std::uint64_t nth, Mode mode, const std::function<void()>& operation)
{
    if (mode == Mode::fail) {
        sys::faults::Arm(nth, Mode::fail);
        operation();
        sys::faults::Arm(0, Mode::fail);
        return;
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        sys::faults::Arm(nth, Mode::end);
        operation();
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
}

// The calls `operation` makes into the OS layer when nothing fails.
std::uint64_t CallsOf(const std::function<void(InstallScene&)>& setUp, const Operation& operation)
{
    InstallScene scene;
    PlayersGame(scene);
    setUp(scene);
    sys::faults::Arm(0, Mode::fail);
    operation.run(scene);
    return sys::faults::Calls();
}

// Injects a fault at every call of `operation` (after `setUp`), in both modes, and recovers
// both ways. A failed call's own reason (the hook's I/O error) is what the outcome names, and
// an operation that says it finished keeps its promise.
Tally InjectEverywhere(const char* what, const std::function<void(InstallScene&)>& setUp, const Operation& operation)
{
    Tally tally;
    tally.calls = CallsOf(setUp, operation);
    EXPECT_GT(tally.calls, 20u) << what;
    for (Mode mode : {Mode::fail, Mode::end})
        for (std::uint64_t nth = 1; nth <= tally.calls; ++nth)
            for (bool installAgain : {true, false}) {
                const std::string where = std::string(what) + (mode == Mode::end ? " ended at call " : " failing call ") +
                                          std::to_string(nth) + (installAgain ? ", then install and uninstall" : ", then uninstall");
                InstallScene scene;
                PlayersGame(scene);
                const Tree before = Snapshot(scene.steam.Path());
                setUp(scene);
                Inject(nth, mode, [&] {
                    const sys::Failure failure = operation.run(scene);
                    if (mode == Mode::end)
                        return;
                    if (failure.Failed()) {
                        EXPECT_EQ(failure.reason, sys::Reason::System(EIO)) << where << ": " << failure.path;
                    } else {
                        EXPECT_TRUE(operation.keeps(scene, before)) << where << ": said it finished";
                    }
                });
                // What the program offers next: it reads the installed state from the disk.
                if (installAgain) {
                    EXPECT_EQ(scene.Install().result, InstallOutcome::Result::installed) << where;
                }
                if (Exists(scene.archivePath)) {
                    EXPECT_FALSE(scene.Uninstall().backupKept) << where;
                }
                Compare(before, Snapshot(scene.steam.Path()), tally, where);
            }
    return tally;
}

TEST(FaultInjection, NoKillAndNoFailedCallCostsAPlayersByteOrLeavesAnythingBehind)
{
    const auto installed = [](InstallScene& s) { s.Install(); };
    const Tally first = InjectEverywhere("first install", [](InstallScene&) {}, install);
    // Installed already: the backup files must be read whole before anything is added to them.
    const Tally again = InjectEverywhere("second install", installed, install);
    const Tally undone = InjectEverywhere("uninstall", installed, uninstall);
    std::printf("fault injection: a first install makes %llu calls, a second %llu, an uninstall %llu; each call failed "
                "once and ended at once (%llu, %llu and %llu faults), each followed by install and uninstall, and by "
                "uninstall alone; lost bytes %llu, entries left behind %d\n",
                static_cast<unsigned long long>(first.calls), static_cast<unsigned long long>(again.calls),
                static_cast<unsigned long long>(undone.calls), 2ull * first.calls, 2ull * again.calls, 2ull * undone.calls,
                static_cast<unsigned long long>(first.lostBytes + again.lostBytes + undone.lostBytes),
                first.leftBehind + again.leftBehind + undone.leftBehind);
    EXPECT_EQ(first.lostBytes + again.lostBytes + undone.lostBytes, 0u);
    EXPECT_EQ(first.leftBehind + again.leftBehind + undone.leftBehind, 0);
}

}  // namespace
#endif
