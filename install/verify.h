#pragma once
// Whether the game's files in a place are the ones this program ships.

#include <cstddef>
#include <string>
#include <vector>

#include "call_status.h"
#include "game_profile.h"
#include "steam_account.h"

// How a file compares with the bytes it should hold.
enum class Sameness {
    same,
    differs,     // other bytes, or a folder in the file's place
    missing,
    unreadable,  // there, but it could not be read (held open by another program, access denied)
};

// Compares the file at `path` with the `size` bytes at `data`, reading a bounded block at a time;
// `why` says why an unreadable file could not be read.
Sameness CompareFile(const std::string& path, const char* data, std::size_t size, sys::Reason& why);

struct NotAsShipped {
    std::string path;
    Sameness state = Sameness::differs;  // differs, missing or unreadable
    sys::Reason reason;                  // why it could not be read
};

// Each file of the game's set, in the set's order, that does not stand in the place's content
// folder byte for byte as shipped. Reads only; memory follows a bounded block, not the files.
std::vector<NotAsShipped> FilesNotAsShipped(const GameProfile& game, const SteamAccount& place);
