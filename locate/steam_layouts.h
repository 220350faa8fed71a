#pragma once
// The two ways Steam has laid the games out: where each puts the games' folders, the tournament's
// files and the backup files.

#include <string>

#include "steam_account.h"

// Before shared game folders, one folder per account below steamapps: the backup files lie in
// <account>, the games' folders are <account>/counter-strike and <account>/counter-strike source,
// and the files go to their cstrike/.
SteamAccount AccountFolderEntry(const std::string& steamappsPath, const std::string& name);

// Today, one folder per game shared by every account, in a library's steamapps/common: the
// backup files lie there, the games' folders are Half-Life and Counter-Strike Source, and the
// files go to Half-Life/cstrike/ for Counter-Strike 1.6 and to
// Counter-Strike Source/cstrike/custom/ludax/ for Counter-Strike: Source, whose game mounts each
// folder under custom/ ahead of its packed files.
SteamAccount LibraryEntry(const std::string& libraryPath);
