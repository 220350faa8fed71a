// Thousands of steps a player, the system and the world might take, in an order chosen by fixed
// seeds: installs and uninstalls, each perhaps cut by a failing call (a locked file, a full disk),
// half a write, a kill or a power cut at a chosen call; Steam's path spelled anew and back; the
// game moved away and back. No step may report a finish it did not reach, and once the world is
// back and a last uninstall has run, the Steam folder equals its start byte for byte.
#ifndef _WIN32
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <random>

#include "fault_injection.h"
#include "install_scene.h"

namespace {

using sys::faults::Mode;

class Sequence {
public:
    explicit Sequence(unsigned seed) : random(seed)
    {
        WriteFile(scene.content + "a.txt", "the player's a.txt");
        WriteFile(scene.content + "cfg/config.cfg", std::string("the player's config\0\xFF", 21));
        WriteFile(scene.content + "cfg/own.cfg", "the player's own");
        start = Snapshot(scene.steam.Path());
    }

    // One step; false, with `why` set, when a step broke a promise.
    bool Step(std::string& why)
    {
        switch (Pick(6)) {
        case 0:
            spelled = !spelled;
            return true;
        case 1:
            std::filesystem::rename(away ? parked : scene.account.cs16Game, away ? scene.account.cs16Game : parked);
            away = !away;
            return true;
        case 2:
        case 3:
            return Operate(true, why);
        default:
            return Operate(false, why);
        }
    }

    // The world put back and the uninstall run until it finishes: true when the Steam folder is
    // as it started.
    bool PutBackAndUninstall(std::string& why)
    {
        if (away)
            std::filesystem::rename(parked, scene.account.cs16Game);
        away = spelled = false;
        if (Exists(scene.archivePath) && scene.Uninstall().backupKept) {
            why = "the last uninstall kept the backup";
            return false;
        }
        const Tree end = Snapshot(scene.steam.Path());
        for (const auto& [path, bytes] : start)
            if (!end.count(path) || end.at(path) != bytes)
                why += "lost or changed " + path + "; ";
        for (const auto& [path, bytes] : end)
            if (!start.count(path))
                why += "left behind " + path + "; ";
        return why.empty();
    }

    std::string steps;  // what was done, for a failure's message

private:
    unsigned Pick(unsigned choices) { return std::uniform_int_distribution<unsigned>(0, choices - 1)(random); }

    // The place as the program finds it now: under the Steam path as the registry spells it.
    SteamAccount Place()
    {
        return spelled ? AccountFolderEntry(SpelledAnew(scene.steam.Path()) + "/steamapps/", "player") : scene.account;
    }

    bool Operate(bool installing, std::string& why)
    {
        // Half the steps run whole; the others meet a fault at one of their first 60 calls.
        const Mode modes[] = {Mode::fail, Mode::partialWrite, Mode::end, Mode::powerCut};
        const Mode mode = modes[Pick(4)];
        const std::uint64_t nth = Pick(2) ? 0 : 1 + Pick(60);
        steps += std::string(installing ? "install" : "uninstall") + (spelled ? " (spelled anew)" : "") +
                 (away ? " (game away)" : "") + (nth ? ", fault " + std::to_string(static_cast<int>(mode)) + " at " +
                                                           std::to_string(nth) : "") + "\n";
        SteamAccount place = Place();
        if (nth && (mode == Mode::end || mode == Mode::powerCut)) {
            std::fflush(nullptr);
            const pid_t child = fork();
            if (child == 0) {
                sys::faults::Arm(nth, mode);
                installing ? static_cast<void>(InstallConfig(scene.profile, place))
                           : static_cast<void>(UninstallConfig(scene.profile, place));
                _exit(0);
            }
            int status = 0;
            return waitpid(child, &status, 0) == child && WIFEXITED(status);
        }
        sys::faults::Arm(nth, mode);
        if (installing) {
            const bool done = InstallConfig(scene.profile, place).result == InstallOutcome::Result::installed;
            sys::faults::Arm(0, Mode::fail);
            if (done && !scene.PayloadWritten())
                why = "said installed, but not every file is as shipped";
        } else {
            const UninstallOutcome outcome = UninstallConfig(scene.profile, place);
            sys::faults::Arm(0, Mode::fail);
            if (away && !outcome.gameAway)
                why = "did not see the game away";
            else if (!outcome.backupKept && Snapshot(scene.steam.Path()) != start)
                why = "said uninstalled while something of ours remains or the player's is not back";
        }
        return why.empty();
    }

    std::mt19937 random;
    InstallScene scene;
    TempFolder elsewhere;
    const std::string parked = elsewhere.Path() + "/parked";
    Tree start;
    bool spelled = false;
    bool away = false;
};

TEST(RandomSequences, NoOrderOfStepsCostsAPlayersByteOrLeavesAnythingBehind)
{
    int steps = 0;
    for (unsigned seed : {1u, 2u, 3u}) {
        Sequence sequence(seed);
        std::string why;
        for (int step = 0; step < 1000 && why.empty(); ++step, ++steps)
            sequence.Step(why);
        if (why.empty())
            sequence.PutBackAndUninstall(why);
        EXPECT_EQ(why, "") << "seed " << seed << ", after:\n" << sequence.steps;
    }
    std::printf("random sequences: %d steps in 3 seeds\n", steps);
}

}  // namespace
#endif
