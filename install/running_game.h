#pragma once
// A game rewrites its configuration when it quits, over the tournament's files or over the
// player's restored ones: neither an install nor an uninstall starts while it runs.

#include "game_profile.h"

// True when one of the game's programs runs (names compared without regard to letter case).
bool GameIsRunning(const GameProfile& game);
