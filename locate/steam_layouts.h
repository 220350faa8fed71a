#pragma once
// The two ways Steam has laid the games out, where each puts the tournament's files and the
// backup files, and what tells the two games apart at a place.

#include <string>
#include <vector>

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

enum class GameId { cs16, css };

// One game as a place holds it: which of the place's folders and flags are its own, and the
// names of its two backup files, which lie in the place's folder (SteamAccount::folder).
struct PlaceGame {
    GameId id;
    std::string SteamAccount::*gameFolder;     // the game's own folder: nothing outside it changes
    std::string SteamAccount::*contentFolder;  // where the place puts this game's files
    bool SteamAccount::*presentFlag;           // the game's folder is there
    bool SteamAccount::*installedFlag;         // its backup archive is there
    const char* archiveName;                   // the backup archive
    const char* removalListName;               // the removal list
    const char* recordName;                    // the record of what the installs wrote
};

inline constexpr PlaceGame cs16AtPlace{GameId::cs16,        &SteamAccount::cs16Game,
                                       &SteamAccount::cs16Content, &SteamAccount::hasCs16,
                                       &SteamAccount::hasCs16Backup, "cs16ludax.bak", "cs16ludax_1.bak",
                                       "cs16ludax_2.bak"};
inline constexpr PlaceGame cssAtPlace{GameId::css,        &SteamAccount::cssGame,
                                      &SteamAccount::cssContent, &SteamAccount::hasCss,
                                      &SteamAccount::hasCssBackup, "cssludax.bak", "cssludax_1.bak",
                                      "cssludax_2.bak"};

// The game's backup files at a place.
struct BackupFiles {
    std::string archive;      // its presence means the configuration is installed
    std::string removalList;
    std::string draft;        // the removal list's rewrite an uninstall has not finished yet
    std::string record;       // what the installs wrote: each file's SHA-256, each folder made
    std::vector<std::string> All() const { return {archive, removalList, draft, record}; }
};
BackupFiles BackupFilesOf(const PlaceGame& game, const SteamAccount& place);

// The folder whose presence means the game is there: the game's folder in an account folder,
// its cstrike/ in a library (a library's Half-Life folder holds Half-Life's other games too).
std::string GameMarker(const PlaceGame& game, const SteamAccount& place);
