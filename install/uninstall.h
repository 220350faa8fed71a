#pragma once
// Undoing a game's first install in a place: what it created goes, the player's files come back.

#include "game_profile.h"
#include "steam_account.h"

struct UninstallOutcome {
    // Some of the player's bytes are still only in the backup archive, which stays.
    bool archiveKept = false;
};

// Deletes what the first install created and puts the player's files back; the backup
// archive, and with it the installed flag, goes only when every file it holds came back whole.
UninstallOutcome UninstallConfig(const GameProfile& game, SteamAccount& place);
