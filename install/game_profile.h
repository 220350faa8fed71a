#pragma once
// The fixed data that makes one install and one uninstall procedure serve both games: the game
// as a place holds it (its folders, flags and backup files: steam_layouts.h), its payload and
// its programs.

#include <string>
#include <vector>

#include "embedded.h"
#include "steam_layouts.h"

struct GameProfile : PlaceGame {
    const EmbeddedContainer* payload;
    std::vector<std::string> programs;  // the game's own programs, lower case: while one runs, hands off
};

extern const GameProfile cs16Profile;
extern const GameProfile cssProfile;
