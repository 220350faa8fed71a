#pragma once

#include <string>
#include <vector>

#include "steam_account.h"

// Where the registry says Steam lives: HKCU\Software\Valve\Steam's "SteamPath" as stored,
// plus "/steamapps/". Ends the process with the registry message when it cannot be read.
std::string ReadSteamappsPath(const std::string& steamKey = "Software\\Valve\\Steam");

// The folders of `steamappsPath` that hold either game or either backup archive, in listing
// order. Ends the process with the "nothing installed" message when there is none.
std::vector<SteamAccount> FindGames(const std::string& steamappsPath);

struct ButtonStates {
    bool cs16Install = false;
    bool cs16Uninstall = false;
    bool cssInstall = false;
    bool cssUninstall = false;
};

// Which action buttons the account at `index` can serve; none for an index out of range.
ButtonStates SelectAccount(const std::vector<SteamAccount>& accounts, int index);
