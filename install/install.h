#pragma once
// Writing one game's tournament files into a place, with the backups that let the uninstall
// undo it.

#include <string>

#include "game_profile.h"
#include "steam_account.h"

struct InstallOutcome {
    enum class Result {
        installed,     // every file written
        backupFailed,  // stopped before `path`, a player's file that could not be backed up
        folderFailed,  // stopped at `path`, a folder that could neither be found nor made
    };
    Result result = Result::installed;
    std::string path;
};

// Writes the game's payload into the place's content folder. A first install (the place's
// installed flag clear) keeps the files it overwrites in the backup archive and lists what it
// creates in the removal list; a reinstall leaves both as the first install wrote them. A stop
// leaves both backup files holding what was done up to there, so that the uninstall undoes it.
// The installed flag is set once every file is written.
InstallOutcome InstallConfig(const GameProfile& game, SteamAccount& place);
