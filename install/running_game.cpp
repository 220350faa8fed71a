#include "running_game.h"

#include <algorithm>

#include "system.h"
#include "text_encoding.h"

bool GameIsRunning(const GameProfile& game)
{
    for (const std::string& name : sys::RunningProgramNames())
        if (std::find(game.programs.begin(), game.programs.end(), AsciiLower(name)) != game.programs.end())
            return true;
    return false;
}
