#pragma once
// Where the registry says Steam lives.

#include <string>

#include "system.h"

struct SteamPath {
    sys::RegistryRead read = sys::RegistryRead::keyMissing;  // ok, or why it could not be read
    sys::Reason reason;         // the registry's own reason, when not read
    std::string steamappsPath;  // "SteamPath" exactly as stored, plus "/steamapps/"; empty unless ok
};

// Reads HKEY_CURRENT_USER\<steamKey>'s "SteamPath".
SteamPath ReadSteamappsPath(const std::string& steamKey = "Software\\Valve\\Steam");
