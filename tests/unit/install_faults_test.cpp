// Nothing of the player's is lost and nothing of ours left behind, whichever call into the
// operating system fails, puts down half its bytes, or is the last before the process ends or the
// power goes: the OS layer's POSIX body does so at the Nth call of a first install, a second
// install and an uninstall, for every N, and at every pair of calls of an uninstall; also with the
// world changed between install and uninstall. Then the player does what the program offers: the
// install again (answering Yes) and the uninstall, or just the uninstall, with the world put back.
// The Steam folder must end exactly as it was.
#ifndef _WIN32
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <tuple>

#include "fault_injection.h"
#include "find_games.h"
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
    std::uint64_t runs = 0;
    std::uint64_t lostBytes = 0;  // of the player's files: missing, or not as they were
    int leftBehind = 0;           // entries that were not there before

    void Print(const std::string& what) const
    {
        std::printf("%s, %llu runs: lost bytes %llu, entries left behind %d\n", what.c_str(),
                    static_cast<unsigned long long>(runs), static_cast<unsigned long long>(lostBytes), leftBehind);
    }
};

void Compare(const Tree& before, const Tree& after, Tally& tally, const std::string& what)
{
    ++tally.runs;
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

// Where the test keeps what it moves away, and the game when it lives behind a link.
struct Elsewhere {
    TempFolder folder;
    std::string Path(const std::string& name) const { return folder.Path() + "/" + name; }
};

// Where an operation runs, and every place discovery finds beside it.
struct Placed {
    SteamAccount place;
    std::vector<SteamAccount> places;
};

// The world a scene lives in: what the install sees, and what the uninstall sees after `change`
// (the place as the program finds it then), until `putBack`.
struct World {
    const char* what;
    InstallScene::Layout layout;
    std::function<void(InstallScene&, Elsewhere&)> prepare;
    std::function<Placed(InstallScene&, Elsewhere&)> change;
    std::function<void(InstallScene&, Elsewhere&)> putBack;
};

const auto nothing = [](InstallScene&, Elsewhere&) {};
const auto same = [](InstallScene& scene, Elsewhere&) { return Placed{scene.account, {scene.account}}; };

// A change of the world that damages a backup file the install wrote, and leaves it so.
World Damaged(const char* what, const char* backup, const std::function<std::string(const std::string&)>& damage)
{
    return {what, InstallScene::Layout::account, nothing,
            [=](InstallScene& scene, Elsewhere&) {
                const std::string path = scene.accountFolder + "/" + backup;
                const std::string damaged = damage(ReadFile(path));
                damaged == "<deleted>" ? RemovePath(path) : WriteFile(path, damaged);
                return Placed{scene.account, {scene.account}};
            },
            nothing};
}

// What the player owns: the Steam folder, and where the game lives when a link leads to it.
Tree Everything(const InstallScene& scene, const Elsewhere& elsewhere)
{
    Tree all;
    for (const auto& [path, bytes] : Snapshot(scene.steam.Path()))
        all["steam/" + path] = bytes;
    for (const auto& [path, bytes] : Snapshot(elsewhere.folder.Path()))
        all["elsewhere/" + path] = bytes;
    return all;
}

const World unchanged{"", InstallScene::Layout::account, nothing, same, nothing};

SteamAccount SecondLibrary(Elsewhere& elsewhere)
{
    SteamAccount second = LibraryEntry(elsewhere.Path("library"));
    second.Game(GameId::cs16).present = true;
    return second;
}

const std::vector<World> worlds = {
    {"SteamPath spelled anew", InstallScene::Layout::account, nothing,
     [](InstallScene& scene, Elsewhere&) {
         const SteamAccount place = AccountFolderEntry(SpelledAnew(scene.steam.Path()) + "/steamapps/", "player");
         return Placed{place, {place}};
     },
     nothing},
    {"the library renamed, and libraryfolders.vdf with it", InstallScene::Layout::library, nothing,
     [](InstallScene& scene, Elsewhere&) {
         const std::string renamed = scene.steam.Path() + "-renamed";
         std::filesystem::rename(scene.steam.Path(), renamed);
         TempFolder steam;  // the Steam folder that lists the library
         WriteFile(steam.Path() + "/steamapps/libraryfolders.vdf", LibraryList({renamed}));
         const std::vector<SteamAccount> places = FindGames(steam.Path() + "/steamapps/").places;
         return Placed{places.empty() ? SteamAccount() : places.front(), places};
     },
     [](InstallScene& scene, Elsewhere&) { std::filesystem::rename(scene.steam.Path() + "-renamed", scene.steam.Path()); }},
    {"the game's folder moved away", InstallScene::Layout::account, nothing,
     [](InstallScene& scene, Elsewhere& elsewhere) {
         std::filesystem::rename(scene.account.Game(GameId::cs16).gameFolder, elsewhere.Path("parked"));
         return Placed{scene.account, {scene.account}};
     },
     [](InstallScene& scene, Elsewhere& elsewhere) { std::filesystem::rename(elsewhere.Path("parked"), scene.account.Game(GameId::cs16).gameFolder); }},
    {"the target of the link to the game removed", InstallScene::Layout::account,
     [](InstallScene& scene, Elsewhere& elsewhere) {
         std::filesystem::rename(scene.account.Game(GameId::cs16).gameFolder, elsewhere.Path("game"));
         std::filesystem::create_directory_symlink(elsewhere.Path("game"), scene.account.Game(GameId::cs16).gameFolder);
     },
     [](InstallScene& scene, Elsewhere& elsewhere) {
         std::filesystem::rename(elsewhere.Path("game"), elsewhere.Path("parked"));
         return Placed{scene.account, {scene.account}};
     },
     [](InstallScene&, Elsewhere& elsewhere) { std::filesystem::rename(elsewhere.Path("parked"), elsewhere.Path("game")); }},
    {"a folder of ours swapped for a link", InstallScene::Layout::account, nothing,
     [](InstallScene& scene, Elsewhere& elsewhere) {
         std::filesystem::rename(scene.content + "resource", elsewhere.Path("resource"));
         std::filesystem::create_directory_symlink(elsewhere.Path("resource"), scene.content + "resource");
         return Placed{scene.account, {scene.account}};
     },
     [](InstallScene& scene, Elsewhere& elsewhere) {
         std::filesystem::remove(scene.content + "resource");
         std::filesystem::rename(elsewhere.Path("resource"), scene.content + "resource");
     }},
    Damaged("the removal list saved as UTF-16", "cs16ludax_1.bak", AsUtf16),
    Damaged("an empty line atop the removal list", "cs16ludax_1.bak", [](const std::string& list) { return "\r\n" + list; }),
    Damaged("the removal list deleted", "cs16ludax_1.bak", [](const std::string&) { return std::string("<deleted>"); }),
    Damaged("the record deleted", "cs16ludax_2.bak", [](const std::string&) { return std::string("<deleted>"); }),
    Damaged("the record cut in its second line", "cs16ludax_2.bak",
            [](const std::string& record) { return record.substr(0, record.find('\n') + 9); }),
    {"the backup files copied to the game at another place", InstallScene::Layout::library,
     [](InstallScene&, Elsewhere& elsewhere) {
         const SteamAccount second = SecondLibrary(elsewhere);
         WriteFile(second.Game(GameId::cs16).contentFolder + "a.txt", "the second player's a.txt");
         WriteFile(second.Game(GameId::cs16).contentFolder + "cfg/config.cfg", "the second player's config");
     },
     [](InstallScene& scene, Elsewhere& elsewhere) {
         const SteamAccount second = SecondLibrary(elsewhere);
         for (const char* backup : cs16BackupFiles)
             WriteFile(second.folder + backup, ReadFile(scene.accountFolder + backup));
         return Placed{second, {scene.account, second}};
     },
     [](InstallScene&, Elsewhere& elsewhere) {
         for (const char* backup : cs16BackupFiles)
             RemovePath(SecondLibrary(elsewhere).folder + backup);
     }},
};

// One operation under faults, on the place as the program finds it: it returns what it could not
// do and why (nothing when it says it finished), and `keeps` tells whether what "finished"
// promises holds, once the world is back.
struct Operation {
    std::function<sys::Failure(InstallScene&, SteamAccount&, const std::vector<SteamAccount>&)> run;
    std::function<bool(InstallScene&, const Tree& before, const Tree& now)> keeps;
};

// "Installed" promises every file of the set as shipped.
const Operation install{
    [](InstallScene& scene, SteamAccount& place, const std::vector<SteamAccount>& places) {
        const InstallOutcome outcome = InstallConfig(scene.profile, place, {}, places);
        return outcome.result == InstallOutcome::Result::installed ? sys::Failure()
                                                                   : sys::Failure{outcome.path, outcome.reason};
    },
    [](InstallScene& scene, const Tree&, const Tree&) { return scene.PayloadWritten(); }};

// "Uninstalled" promises everything as it was before the first install; "kept" names why.
const Operation uninstall{
    [](InstallScene& scene, SteamAccount& place, const std::vector<SteamAccount>& places) {
        const UninstallOutcome outcome = UninstallConfig(scene.profile, place, {}, places);
        EXPECT_EQ(outcome.backupKept, outcome.firstFailure.Failed());
        return outcome.firstFailure;
    },
    [](InstallScene&, const Tree& before, const Tree& now) { return now == before; }};

struct Fault {
    Mode mode;
    std::uint64_t nth;
    std::uint64_t alsoNth = 0;
    std::string Describe() const
    {
        const char* names[] = {"failing call ", "half a write at call ", "ended at call ", "power cut at call "};
        return names[static_cast<int>(mode)] + std::to_string(nth) + (alsoNth ? " and " + std::to_string(alsoNth) : "");
    }
};

// Runs `operation` under `fault`: here when calls fail, in a child process that ends otherwise.
void Inject(const Fault& fault, const std::function<void()>& operation)
{
    if (fault.mode == Mode::fail || fault.mode == Mode::partialWrite) {
        sys::faults::Arm(fault.nth, fault.mode, fault.alsoNth);
        operation();
        sys::faults::Arm(0, Mode::fail);
        return;
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        sys::faults::Arm(fault.nth, fault.mode);
        operation();
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
}

// One run: the scene set up, the world changed, the operation under the fault, the world put
// back, then what the program offers next (it reads the installed state from the disk).
void RunOnce(const char* what, const World& world, const std::function<void(InstallScene&)>& setUp,
             const Operation& operation, const Fault& fault, bool installAgain, Tally& tally)
{
    // The mutation run needs one failure, not all of them.
    if (std::getenv("LUDAX_STOP_AT_FIRST_FAILURE") && ::testing::Test::HasFailure())
        return;
    const std::string where = std::string(what) + (*world.what ? std::string(", ") + world.what : "") + ", " +
                              fault.Describe() + (installAgain ? ", then install and uninstall" : ", then uninstall");
    InstallScene scene(testPayload, world.layout);
    Elsewhere elsewhere;
    world.prepare(scene, elsewhere);
    PlayersGame(scene);
    const Tree before = Everything(scene, elsewhere);
    setUp(scene);
    Placed placed = world.change(scene, elsewhere);
    sys::Failure failure{"<did not run>", {}};
    Inject(fault, [&] { failure = operation.run(scene, placed.place, placed.places); });
    world.putBack(scene, elsewhere);
    if (fault.mode == Mode::fail || fault.mode == Mode::partialWrite) {
        if (failure.Failed()) {
            // Only the failed calls fail: the reason named is theirs, unless the world stands in the way.
            if (!*world.what) {
                EXPECT_EQ(failure.reason, sys::Reason::System(EIO)) << where << ": " << failure.path;
            }
        } else {
            EXPECT_TRUE(operation.keeps(scene, before, Everything(scene, elsewhere))) << where << ": said it finished";
        }
    }
    if (installAgain) {
        EXPECT_EQ(scene.Install().result, InstallOutcome::Result::installed) << where;
    }
    if (Exists(scene.archivePath)) {
        EXPECT_FALSE(scene.Uninstall().backupKept) << where;
    }
    Compare(before, Everything(scene, elsewhere), tally, where);
}

// The calls `operation` makes into the OS layer when nothing fails.
std::uint64_t CallsOf(const World& world, const std::function<void(InstallScene&)>& setUp, const Operation& operation)
{
    InstallScene scene(testPayload, world.layout);
    Elsewhere elsewhere;
    world.prepare(scene, elsewhere);
    PlayersGame(scene);
    setUp(scene);
    Placed placed = world.change(scene, elsewhere);
    sys::faults::Arm(0, Mode::fail);
    operation.run(scene, placed.place, placed.places);
    const std::uint64_t calls = sys::faults::Calls();
    world.putBack(scene, elsewhere);
    return calls;
}

const std::function<void(InstallScene&)> installed = [](InstallScene& scene) { scene.Install(); };
const std::function<void(InstallScene&)> nothingYet = [](InstallScene&) {};

TEST(FaultInjection, NoFailedCallHalfWriteKillOrPowerCutCostsAPlayersByteOrLeavesAnythingBehind)
{
    Tally tally;
    const struct {
        const char* what;
        std::function<void(InstallScene&)> setUp;
        const Operation& operation;
    } operations[] = {
        {"first install", [](InstallScene&) {}, install},
        // Installed already: the backup files must be read whole before anything is added to them.
        {"second install", installed, install},
        {"uninstall", installed, uninstall},
    };
    std::string calls;
    for (const auto& o : operations) {
        const std::uint64_t count = CallsOf(unchanged, o.setUp, o.operation);
        EXPECT_GT(count, 20u) << o.what;
        calls += (calls.empty() ? "" : ", ") + std::string(o.what) + " " + std::to_string(count);
        for (Mode mode : {Mode::fail, Mode::partialWrite, Mode::end, Mode::powerCut})
            for (std::uint64_t nth = 1; nth <= count; ++nth)
                for (bool installAgain : {true, false})
                    RunOnce(o.what, unchanged, o.setUp, o.operation, {mode, nth}, installAgain, tally);
    }
    tally.Print("fault injection: calls made by a " + calls +
                "; each failed, half-written, ended and cut by a power cut in turn");
    EXPECT_EQ(tally.lostBytes, 0u);
    EXPECT_EQ(tally.leftBehind, 0);
}

TEST(FaultInjection, TwoFailuresInOneUninstallOrFirstInstallCostNothingEither)
{
    // A file that will not go and then the removal list's draft, a folder that can be neither
    // removed nor listed; a first install's file that cannot be written and then the take-back of
    // what it wrote ahead for the files after it: every pair of failing calls.
    Tally tally;
    for (const auto& [what, setUp, operation] :
         {std::tuple{"uninstall", installed, uninstall}, std::tuple{"first install", nothingYet, install}}) {
        const std::uint64_t count = CallsOf(unchanged, setUp, operation);
        for (std::uint64_t nth = 1; nth <= count; ++nth)
            for (std::uint64_t also = nth + 1; also <= count + 2; ++also)
                RunOnce(what, unchanged, setUp, operation, {Mode::fail, nth, also}, false, tally);
    }
    tally.Print("two failures in one uninstall or first install");
}

TEST(FaultInjection, TheWorldChangedBetweenInstallAndUninstallCostsNothing)
{
    Tally tally;
    for (const World& world : worlds) {
        const std::uint64_t count = CallsOf(world, installed, uninstall);
        for (Mode mode : {Mode::fail, Mode::end, Mode::powerCut})
            for (std::uint64_t nth = 0; nth <= count; ++nth)  // 0: no fault at all
                RunOnce("uninstall", world, installed, uninstall, {mode, nth}, false, tally);
    }
    // Where the backup files were copied, an install changes nothing either.
    const World& copied = worlds.back();
    for (std::uint64_t nth = 0; nth <= CallsOf(copied, installed, install); ++nth)
        RunOnce("install", copied, installed, install, {Mode::fail, nth}, false, tally);
    tally.Print("the world changed between install and uninstall: " + std::to_string(worlds.size()) + " changes");
}

TEST(FaultInjection, ALineLeavesTheListOnlyWithWhatItNames)
{
    // Whichever call fails, a removal line goes only once what it names is gone: a line dropped
    // while a folder above it could not be looked at leaves a folder of ours for good. (The record
    // is deleted: it would name the folders too.)
    const std::uint64_t count = CallsOf(unchanged, installed, uninstall);
    for (std::uint64_t nth = 1; nth <= count; ++nth) {
        InstallScene scene;
        PlayersGame(scene);
        ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
        RemovePath(scene.accountFolder + "/cs16ludax_2.bak");
        const std::string list = ReadFile(scene.removalListPath);
        sys::faults::Arm(nth, Mode::fail);
        scene.Uninstall();
        sys::faults::Arm(0, Mode::fail);
        const std::string now = Exists(scene.removalListPath) ? ReadFile(scene.removalListPath) : "";
        for (std::size_t at = 0, end; (end = list.find("\r\n", at)) != std::string::npos; at = end + 2) {
            const std::string line = list.substr(at, end - at);
            EXPECT_TRUE(!Exists(line) || now.find(line + "\r\n") != std::string::npos)
                << "failing call " << nth << ": " << line << " stands and left the list";
        }
    }
}

}  // namespace
#endif
