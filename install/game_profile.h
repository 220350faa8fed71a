#pragma once
// The fixed data that makes one install procedure serve both games.

#include <string>

#include "embedded.h"
#include "steam_account.h"

struct GameProfile {
    std::string SteamAccount::*contentFolder;  // where the entry puts this game's files
    const char* archiveName;      // backup archive, in the account folder
    const char* removalListName;  // removal list, in the account folder
    bool SteamAccount::*installedFlag;
    const char* reinstallQuestion;
    const char* installedMessage;
    const char* uninstalledMessage;
    const EmbeddedContainer* payload;
};

extern const GameProfile cs16Profile;
extern const GameProfile cssProfile;
