#pragma once
// The places that hold either game or either backup archive.

#include <string>
#include <vector>

#include "call_status.h"
#include "steam_account.h"

// The Steam folder (the part of `steamappsPath` before "/steamapps/"), then every further
// library that steamapps/libraryfolders.vdf lists, then those only config/libraryfolders.vdf
// lists, in file order, each place named once.
std::vector<std::string> SteamLibraries(const std::string& steamappsPath);

// One spelling for the ways Windows accepts of naming the same folder: letter case, '\' or '/',
// doubled and trailing separators, and "." and ".." segments make no difference there.
std::string PlaceKey(const std::string& path);

// Looks at what stands at the place now: each game's folder and backup archive (present,
// installed). True when it holds any of them. What the system could not tell about is noted in
// `failure`, unless an earlier one was.
bool LookAt(SteamAccount& place, sys::Failure& failure);

struct FoundGames {
    std::vector<SteamAccount> places;
    // The first folder or entry discovery could not look at (steamapps could not be listed, the
    // system could not tell what stands at a path), and why; what lies there is not offered.
    sys::Failure failure;
};

// The folders of `steamappsPath` that hold either game or either backup archive, in listing
// order, then the libraries whose shared game folder does, in library order.
FoundGames FindGames(const std::string& steamappsPath);
