#pragma once
// The two ways Steam has laid the games out, and where each puts the tournament's files and
// the backup files.

#include <string>

#include "steam_account.h"

// Before shared game folders, one folder per account below steamapps: the backup files lie in
// <account>, the files go to <account>/counter-strike/cstrike/ and
// <account>/counter-strike source/cstrike/.
SteamAccount AccountFolderEntry(const std::string& steamappsPath, const std::string& name);

// Today, one folder per game shared by every account, in a library's steamapps/common: the
// backup files lie there, the files go to Half-Life/cstrike/ for Counter-Strike 1.6 and to
// Counter-Strike Source/cstrike/custom/ludax/ for Counter-Strike: Source, whose game mounts each
// folder under custom/ ahead of its packed files.
SteamAccount LibraryEntry(const std::string& libraryPath);

// The game folders whose presence means the game is installed there.
std::string Cs16GameFolder(const SteamAccount& place);
std::string CssGameFolder(const SteamAccount& place);
