#pragma once
// A player's PC as a test sets it up: Steam folders in fresh temporary folders, the registry
// value that points the program at them (the tests and the program share one Wine prefix, so
// one HKEY_CURRENT_USER), a game left running; and the payload an install must bring.

#include <optional>
#include <string>
#include <vector>

#include "launched_process.h"
#include "test_files.h"

// What an account folder of the old layout holds; combine with |.
enum AccountPart : unsigned {
    cs16Game = 1,    // counter-strike/cstrike/ with a player's config.cfg
    cssGame = 2,     // counter-strike source/cstrike/ with a player's config.cfg
    cssBackup = 4,   // cssludax.bak: an empty backup archive
};

class SteamFolder {
public:
    SteamFolder();  // <temp>/Steam with an empty steamapps/

    const std::string& Path() const { return steam; }  // no trailing slash
    std::string Steamapps() const { return steam + "/steamapps/"; }
    std::string Account(const std::string& name) const { return Steamapps() + name; }

    void AddAccount(const std::string& name, unsigned parts);

    // SteamPath = this folder, with forward slashes as Steam writes it.
    void Register() const { SetSteamPath(steam); }

    static void SetSteamPath(const std::string& value);
    static void RemoveKey();

private:
    TempFolder temp;
    std::string steam;
};

// A game left running: a copy of the test program under a game's program name ("hl.exe"), which
// then only waits (see main.cpp), until the test closes it.
class RunningGame {
public:
    explicit RunningGame(const std::string& name);
    bool Running() const { return game && game->Running(); }
    void Close() { game.reset(); }

private:
    TempFolder folder;
    std::optional<LaunchedProcess> game;
};

// The payload in the source tree, the oracle for what an install writes: the record names of
// payload/<game>.manifest in packing order (empty when unreadable), and one record's bytes.
std::vector<std::string> ManifestNames(const std::string& game);
std::string PayloadBytes(const std::string& game, const std::string& name);

