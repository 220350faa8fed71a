#pragma once
// A Steam folder tree in a fresh temporary folder, and the registry value that points the
// program at it (the tests and the program share one Wine prefix, so one HKEY_CURRENT_USER).

#include <string>

#include "test_files.h"

// What an account folder holds; combine with |.
enum AccountPart : unsigned {
    cs16Game = 1,    // counter-strike/cstrike/ with a player's config.cfg
    cssGame = 2,     // counter-strike source/cstrike/ with a player's config.cfg
    cs16Backup = 4,  // cs16ludax.bak: an empty backup archive
    cssBackup = 8,   // cssludax.bak: an empty backup archive
};

class SteamFolder {
public:
    SteamFolder();  // <temp>/Steam with an empty steamapps/

    const std::string& Path() const { return steam; }  // no trailing slash
    std::string Steamapps() const { return steam + "/steamapps/"; }
    std::string Account(const std::string& name) const { return Steamapps() + name; }

    void AddAccount(const std::string& name, unsigned parts);

    // SteamPath = this folder, with forward slashes as Steam writes it.
    void Register() const;

private:
    TempFolder temp;
    std::string steam;
};

void SetSteamPath(const std::string& value);
void CreateSteamKeyWithoutPath();
void RemoveSteamKey();
