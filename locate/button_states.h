#pragma once
// Which of the four action buttons the chosen place can serve: the install buttons follow the
// game folders, the uninstall buttons the backup archives.

#include <array>
#include <vector>

#include "steam_account.h"

// A game's two buttons.
struct GameButtonStates {
    bool install = false;
    bool uninstall = false;
};
using ButtonStates = std::array<GameButtonStates, 2>;  // by GameId

// The buttons for the place at `index`; none for an index out of range.
ButtonStates SelectAccount(const std::vector<SteamAccount>& accounts, int index);
