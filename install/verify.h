#pragma once
// Whether the game's files in a place are the ones this program ships.

#include <string>
#include <vector>

#include "game_profile.h"
#include "steam_account.h"

struct NotAsShipped {
    std::string path;
    bool missing = false;  // else there, with other bytes (or bytes that could not be read)
};

// Each file of the game's set, in the set's order, that does not stand in the place's content
// folder byte for byte as shipped. Reads only; memory follows a bounded block, not the files.
std::vector<NotAsShipped> FilesNotAsShipped(const GameProfile& game, const SteamAccount& place);
