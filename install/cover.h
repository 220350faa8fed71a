#pragma once
// What the backup files of earlier installs, whole or stopped part-way, already cover: the
// player's files the archive holds, the files and folders the removal list names as ours, and what
// the record says the installs wrote. An install backs up, lists or records only what they do not
// cover yet.

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "call_status.h"
#include "game_profile.h"
#include "removal_list.h"
#include "safe_paths.h"
#include "written_record.h"

struct Cover {
    bool archiveExists = false;
    std::uint64_t archiveEnd = 0;  // where its last whole record ends; 0: shorter than its header
    // Names of `names` the archive holds a whole record of, with the bytes it holds.
    std::map<std::string, WrittenBytes> backedUp;
    bool listExists = false;
    ListExtent listExtent;
    std::set<std::string> listed;  // paths of `paths` the removal list names
    bool recordExists = false;
    WrittenRecord record;
    // The game's folders the lines and the record name (GameTheyBelongTo).
    NamedGames namedGames;
    sys::Failure unreadable;  // a backup file that is there but could not be read to its end
};

// Reads the game's backup files at the place, keeping of the archive and the removal list only
// the names and paths asked about, so that a damaged file of any size costs no more memory than
// the payload's own names. A removal line counts for what it names now (LineAtPlace), wherever the
// Steam folder is.
Cover ReadCover(const GameProfile& game, const SteamAccount& place, const std::set<std::string>& names,
                const std::set<std::string>& paths);
