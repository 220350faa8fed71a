#pragma once
// One place that holds a game folder or a backup archive: an account folder below steamapps
// (Steam before shared game folders), or the shared game folder of a Steam library; and what it
// knows of each of the two games there.

#include <array>
#include <cstddef>
#include <string>
#include <vector>

enum class GameId { cs16, css };
inline constexpr std::array<GameId, 2> bothGames{GameId::cs16, GameId::css};

// A game's backup files at a place, in the place's folder beside the game's folder.
struct BackupFiles {
    std::string archive;      // its presence means the configuration is installed
    std::string removalList;
    std::string draft;        // the removal list's rewrite an uninstall has not finished yet
    std::string record;       // what the installs wrote: each file's SHA-256, each folder made
    std::vector<std::string> All() const { return {archive, removalList, draft, record}; }
};

// What a place knows of one game.
struct GameAtPlace {
    GameId id = GameId::cs16;
    std::string gameFolder;     // the game's own folder: nothing outside it is changed
    std::string marker;         // whose presence means the game is there: the game's folder in an
                                // account folder, its cstrike/ in a library (whose Half-Life holds
                                // Half-Life's other games too)
    std::string contentFolder;  // where the tournament's files go, below gameFolder; ends with '/'
    BackupFiles backup;
    bool present = false;       // the marker was there when the place was looked at
    bool installed = false;     // the backup archive was there, or an install or uninstall left it
};

struct SteamAccount {
    std::string name;      // the account folder's bare name, or the library's path as Steam wrote it
    bool library = false;  // a Steam library's shared game folder, not an account folder
    std::string folder;    // holds the backup files; no trailing '/'
    std::array<GameAtPlace, 2> games{};

    GameAtPlace& Game(GameId id) { return games[static_cast<std::size_t>(id)]; }
    const GameAtPlace& Game(GameId id) const { return games[static_cast<std::size_t>(id)]; }

    // What the window's buttons ask of a place: a game's folder, its configuration installed.
    bool hasCs16() const { return Game(GameId::cs16).present; }
    bool hasCss() const { return Game(GameId::css).present; }
    bool hasCs16Backup() const { return Game(GameId::cs16).installed; }
    bool hasCssBackup() const { return Game(GameId::css).installed; }
};
