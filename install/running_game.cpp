#include "running_game.h"

#include <algorithm>

#include "system.h"

bool GameIsRunning(const GameProfile& game)
{
    for (std::string name : sys::RunningProgramNames()) {
        std::transform(name.begin(), name.end(), name.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        if (std::find(game.programs.begin(), game.programs.end(), name) != game.programs.end())
            return true;
    }
    return false;
}
