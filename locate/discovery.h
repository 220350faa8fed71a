#pragma once

#include <string>
#include <vector>

#include "steam_account.h"

// Where the registry says Steam lives: HKCU\Software\Valve\Steam's "SteamPath" as stored,
// plus "/steamapps/". Ends the process with the registry message when it cannot be read.
std::string ReadSteamappsPath(const std::string& steamKey = "Software\\Valve\\Steam");

// The paths of the account folder `name` below steamapps, as Steam laid games out before it
// shared them between accounts: <account>/counter-strike/cstrike/ and .../counter-strike source/cstrike/.
SteamAccount AccountFolderEntry(const std::string& steamappsPath, const std::string& name);

// The paths of a Steam library's shared game folder <library>/steamapps/common: Half-Life/cstrike/
// for Counter-Strike 1.6, and Counter-Strike Source/cstrike/custom/ludax/ for Counter-Strike:
// Source, whose game mounts each folder under custom/ ahead of its packed files.
SteamAccount LibraryEntry(const std::string& libraryPath);

// The Steam folder (the part of `steamappsPath` before "/steamapps/"), then every further
// library that libraryfolders.vdf lists, in file order, each place named once.
std::vector<std::string> SteamLibraries(const std::string& steamappsPath);

// The folders of `steamappsPath` that hold either game or either backup archive, in listing
// order, then the libraries whose shared game folder does, in library order. Ends the process
// with the "nothing installed" message when there is none.
std::vector<SteamAccount> FindGames(const std::string& steamappsPath);

struct ButtonStates {
    bool cs16Install = false;
    bool cs16Uninstall = false;
    bool cssInstall = false;
    bool cssUninstall = false;
};

// Which action buttons the account at `index` can serve; none for an index out of range.
ButtonStates SelectAccount(const std::vector<SteamAccount>& accounts, int index);
