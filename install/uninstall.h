#pragma once
// Undoing a game's installs in a place: what they created goes, the player's files come back.

#include <vector>

#include "action_log.h"
#include "game_profile.h"
#include "call_status.h"
#include "steam_account.h"

struct UninstallOutcome {
    // Something could not be undone: a file or an empty folder the installs made that would not
    // go, or a player's file the archive holds whole that could not be written back. Both backup
    // files stay (the removal list naming only what remains), and so does the uninstall.
    bool backupKept = false;
    sys::Failure firstFailure;  // the first thing that could not be undone, and why
    // The game's folder or its cstrike folder (`firstFailure`) is not there (moved, renamed, its
    // drive not mounted, a link whose target is gone): nothing was changed, and both backup
    // files stay.
    bool gameAway = false;
    // The backup files belong to the game at another place found, `firstFailure.path` (they were
    // copied here): nothing was changed, and they stay.
    bool elsewhere = false;
    bool installed = false;  // the backup archive is there still: the uninstall is offered
};

// Deletes what the installs created, files first, then folders innermost first, and puts the
// player's files back, each on the disk before the archive that held it goes. What is ours: what
// the removal list names, every file whose bytes are still what the record says an install
// wrote there or exactly a file of this program's own set, and every folder the record says an
// install made (once empty); but no file the archive puts back. Only what lies below the game's
// own folder is touched, never through a link below the content folder, and lines and records
// that no install could have written are passed over; a removal line names what it named below
// this game's folder wherever the Steam folder or library is now. The backup files go only when
// nothing of ours remains. With the game away, or backup files that belong to the game at
// another of `places`, nothing changes. Each file or folder removed and each file restored goes
// to `log`, and so does what is kept.
UninstallOutcome UninstallConfig(const GameProfile& game, const SteamAccount& place, const ActionLog& log = {},
                                 const std::vector<SteamAccount>& places = {});
