#pragma once
// Which of the four action buttons the chosen place can serve: the install buttons follow the
// game folders, the uninstall buttons the backup archives.

#include <vector>

#include "steam_account.h"

struct ButtonStates {
    bool cs16Install = false;
    bool cs16Uninstall = false;
    bool cssInstall = false;
    bool cssUninstall = false;
};

// The buttons for the place at `index`; none for an index out of range.
ButtonStates SelectAccount(const std::vector<SteamAccount>& accounts, int index);
