#pragma once
// Where Steam lives.

#include <string>

#include "system.h"

struct SteamPath {
    sys::RegistryRead read = sys::RegistryRead::keyMissing;  // ok, or why it could not be read
    sys::Reason reason;         // the registry's own reason, when not read
    std::string steamappsPath;  // the Steam folder exactly as found, plus "/steamapps/"; empty unless ok
    std::string folderNotThere; // not found: the first folder named (by /steam or the registry) that is not there
};

// Reads HKEY_CURRENT_USER\<steamKey>'s "SteamPath": where the window looks for Steam.
SteamPath ReadSteamappsPath(const std::string& steamKey = "Software\\Valve\\Steam");

// Where the window looks for Steam: `named` (its /steam) when given, else the user's SteamPath
// alone, whose absence the window reports in its own boxes.
SteamPath SteamForTheWindow(const std::string& named);

// Where a command looks for Steam: `named` (the command line's /steam, a relative one taken from
// the current folder) when given; else the user's SteamPath; else, for scripts that run under
// another account, the machine's own entry, "InstallPath" of HKEY_LOCAL_MACHINE\SOFTWARE\Valve\Steam
// in the 32-bit view (where Steam's installer writes it), then in the 64-bit view. An entry whose
// folder is not there counts as none. Not read when none of them names a folder that is there.
SteamPath FindSteam(const std::string& named);
