// The game left open: its programs are found by name, in any letter case.
#ifndef _WIN32
#include <gtest/gtest.h>

#include <algorithm>

#include "game_profile.h"
#include "running_game.h"
#include "running_program.h"
#include "system.h"

namespace {

TEST(RunningGame, EitherGamesProgramsAreFoundByNameInAnyLetterCase)
{
    EXPECT_FALSE(GameIsRunning(cs16Profile));
    EXPECT_FALSE(GameIsRunning(cssProfile));
    {
        RunningProgram game("HL.EXE");
        ASSERT_TRUE(game.started);
        EXPECT_TRUE(Soon([] { return GameIsRunning(cs16Profile); }));
        EXPECT_FALSE(GameIsRunning(cssProfile));
    }
    EXPECT_FALSE(GameIsRunning(cs16Profile));
    for (const char* name : {"hl2.exe", "Cstrike.exe", "cstrike_win64.exe"}) {
        RunningProgram game(name);
        ASSERT_TRUE(game.started);
        EXPECT_TRUE(Soon([] { return GameIsRunning(cssProfile); })) << name;
        EXPECT_FALSE(GameIsRunning(cs16Profile)) << name;
    }
    RunningProgram lookalike("hl.exe.bak");
    ASSERT_TRUE(Soon([] {
        const std::vector<std::string> names = sys::RunningProgramNames();
        return std::find(names.begin(), names.end(), "hl.exe.bak") != names.end();
    }));
    EXPECT_FALSE(GameIsRunning(cs16Profile));
}

}  // namespace
#endif
