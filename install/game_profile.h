#pragma once
// What makes one install and one uninstall procedure serve both games, beside what a place knows
// of the game (GameAtPlace): its payload and its programs.

#include <string>
#include <vector>

#include "embedded.h"
#include "steam_account.h"

struct GameProfile {
    GameId id;
    const EmbeddedContainer* payload;
    std::vector<std::string> programs;  // the game's own programs, lower case: while one runs, hands off
};

extern const GameProfile cs16Profile;
extern const GameProfile cssProfile;
