#pragma once
// The fixed data that makes one install and one uninstall procedure serve both games.

#include <string>
#include <vector>

#include "embedded.h"
#include "steam_account.h"

struct GameProfile {
    std::string SteamAccount::*gameFolder;     // the game's own folder: nothing outside it changes
    std::string SteamAccount::*contentFolder;  // where the place puts this game's files
    const char* archiveName;      // backup archive, in the place's folder
    const char* removalListName;  // removal list, in the place's folder
    bool SteamAccount::*installedFlag;
    const EmbeddedContainer* payload;
    std::vector<std::string> programs;  // the game's own programs, lower case: while one runs, hands off
};

extern const GameProfile cs16Profile;
extern const GameProfile cssProfile;
