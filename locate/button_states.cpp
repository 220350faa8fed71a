#include "button_states.h"

ButtonStates SelectAccount(const std::vector<SteamAccount>& accounts, int index)
{
    ButtonStates states;
    if (index < 0 || static_cast<std::size_t>(index) >= accounts.size())
        return states;
    const SteamAccount& account = accounts[index];
    states.cs16Install = account.hasCs16;
    states.cs16Uninstall = account.hasCs16Backup;
    states.cssInstall = account.hasCss;
    states.cssUninstall = account.hasCssBackup;
    return states;
}
