// The game left open: its programs are found by name, in any letter case.
#ifndef _WIN32
#include <gtest/gtest.h>

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "game_profile.h"
#include "running_game.h"
#include "system.h"
#include "test_files.h"

extern char** environ;

namespace {

// A program that waits, started under the given file name.
class Program {
public:
    Program(const std::string& folder, const std::string& name) : path(folder + "/" + name)
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
    std::string path;
    pid_t pid = 0;
};

// True once `found` holds: a program just started may take a moment to show its name.
bool Soon(const std::function<bool()>& found)
{
    for (int wait = 0; wait < 500; ++wait) {
        if (found())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

TEST(RunningGame, EitherGamesProgramsAreFoundByNameInAnyLetterCase)
{
    TempFolder root;
    EXPECT_FALSE(GameIsRunning(cs16Profile));
    EXPECT_FALSE(GameIsRunning(cssProfile));
    {
        Program game(root.Path(), "HL.EXE");
        ASSERT_TRUE(game.started);
        EXPECT_TRUE(Soon([] { return GameIsRunning(cs16Profile); }));
        EXPECT_FALSE(GameIsRunning(cssProfile));
    }
    EXPECT_FALSE(GameIsRunning(cs16Profile));
    for (const char* name : {"hl2.exe", "Cstrike.exe", "cstrike_win64.exe"}) {
        Program game(root.Path(), name);
        ASSERT_TRUE(game.started);
        EXPECT_TRUE(Soon([] { return GameIsRunning(cssProfile); })) << name;
        EXPECT_FALSE(GameIsRunning(cs16Profile)) << name;
    }
    Program lookalike(root.Path(), "hl.exe.bak");
    ASSERT_TRUE(Soon([] {
        const std::vector<std::string> names = sys::RunningProgramNames();
        return std::find(names.begin(), names.end(), "hl.exe.bak") != names.end();
    }));
    EXPECT_FALSE(GameIsRunning(cs16Profile));
}

}  // namespace
#endif
