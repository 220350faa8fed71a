// The game left open: its programs are found by name, in any letter case, and a command meets
// one with status 5. Natively, a copy of /bin/sleep runs under the game's name.
#ifndef _WIN32
#include <gtest/gtest.h>

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "command_line.h"
#include "game_profile.h"
#include "run_command.h"
#include "running_game.h"
#include "steam_layouts.h"
#include "system.h"
#include "test_files.h"
#include "test_registry.h"

extern char** environ;

namespace {

// A program that waits, started under the given file name.
class Program {
public:
    explicit Program(const std::string& name) : path(folder.Path() + "/" + name)
    {
        std::filesystem::copy_file("/bin/sleep", path);
        char* argv[] = {path.data(), const_cast<char*>("60"), nullptr};
        started = posix_spawn(&pid, path.c_str(), nullptr, nullptr, argv, environ) == 0;
    }
    ~Program()
    {
        if (started) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
    }
    bool started = false;

private:
    TempFolder folder;
    std::string path;
    pid_t pid = 0;
};

TEST(RunningGame, EitherGamesProgramsAreFoundByNameInAnyLetterCase)
{
    EXPECT_EQ(cs16Profile.programs, (std::vector<std::string>{"hl.exe"}));
    EXPECT_EQ(cssProfile.programs, (std::vector<std::string>{"hl2.exe", "cstrike.exe", "cstrike_win64.exe"}));

    // A game of this test's own, whose programs no other process on this machine is named after
    // (a real hl2.exe may well run beside the tests).
    const std::string own = "ludaxgame" + std::to_string(getpid());
    GameProfile game = cssProfile;
    game.programs = {own + "a.exe", own + "b.exe"};
    EXPECT_FALSE(GameIsRunning(game));
    for (const std::string& name : {own + "A.EXE", own + "b.Exe"}) {
        Program running(name);
        ASSERT_TRUE(running.started);
        EXPECT_TRUE(Soon([&] { return GameIsRunning(game); })) << name;
    }
    EXPECT_FALSE(GameIsRunning(game));
    Program lookalike(own + "a.exe.bak");
    ASSERT_TRUE(Soon([&] {
        const std::vector<std::string> names = sys::RunningProgramNames();
        return std::find(names.begin(), names.end(), own + "a.exe.bak") != names.end();
    }));
    EXPECT_FALSE(GameIsRunning(game));

    // A LAN admin's install and uninstall meet the game left open; an install that finds every
    // file as shipped changes nothing, so it need not wait.
    RegisteredSteam steam;
    WriteFile(AccountFolderEntry(steam.Apps(), "player").Game(GameId::cs16).contentFolder + "config.cfg", "player's");
    Command install, uninstall;
    std::string error;
    ASSERT_TRUE(ParseCommandLine({"/install", "cs16"}, install, error));
    ASSERT_TRUE(ParseCommandLine({"/uninstall", "cs16"}, uninstall, error));
    const auto running = [] { return GameIsRunning(cs16Profile); };
    {
        Program hl("hl.exe");
        ASSERT_TRUE(Soon(running));
        EXPECT_EQ(RunCommand(install).status, 5);
    }
    ASSERT_TRUE(Soon([&] { return !running(); }));
    EXPECT_EQ(RunCommand(install).status, 0);
    Program hl("hl.exe");
    ASSERT_TRUE(Soon(running));
    EXPECT_EQ(RunCommand(install).status, 0);
    EXPECT_EQ(RunCommand(uninstall).status, 5);
}

}  // namespace
#endif
