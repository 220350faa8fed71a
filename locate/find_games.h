#pragma once
// The places that hold either game or either backup archive.

#include <string>
#include <vector>

#include "steam_account.h"

// The Steam folder (the part of `steamappsPath` before "/steamapps/"), then every further
// library that steamapps/libraryfolders.vdf lists, then those only config/libraryfolders.vdf
// lists, in file order, each place named once.
std::vector<std::string> SteamLibraries(const std::string& steamappsPath);

// The folders of `steamappsPath` that hold either game or either backup archive, in listing
// order, then the libraries whose shared game folder does, in library order. Empty when there
// is none.
std::vector<SteamAccount> FindGames(const std::string& steamappsPath);
