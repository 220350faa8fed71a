#pragma once
// What the backup files of earlier installs, whole or stopped part-way, already cover: the
// player's files the archive holds, and the files and folders the removal list names as ours.
// An install backs up or lists only what they do not cover yet.

#include <cstdint>
#include <set>
#include <string>

#include "call_status.h"
#include "game_profile.h"
#include "removal_list.h"

struct Cover {
    bool archiveExists = false;
    std::uint64_t archiveEnd = 0;    // where its last whole record ends; 0: shorter than its header
    std::set<std::string> backedUp;  // names of `names` the archive holds a whole record of
    bool listExists = false;
    ListExtent listExtent;
    std::set<std::string> listed;    // paths of `paths` the removal list names
    sys::Failure unreadable;         // a backup file that is there but could not be read to its end
};

// Reads the game's two backup files at the place, keeping only the names and paths asked about,
// so that a damaged file of any size costs no more memory than the payload's own names. A
// removal line counts for what it names now (LineAtPlace), wherever the Steam folder is.
Cover ReadCover(const GameProfile& game, const SteamAccount& place, const std::set<std::string>& names,
                const std::set<std::string>& paths);
