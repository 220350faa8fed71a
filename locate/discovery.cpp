#include "discovery.h"

#include "system.h"

std::string ReadSteamappsPath(const std::string& steamKey)
{
    std::string steamPath;
    switch (sys::ReadUserRegistryString(steamKey, "SteamPath", steamPath)) {
    case sys::RegistryRead::keyMissing:
        sys::ExitWithMessage("Registry read failed!", "Error!", sys::mbOk);
    case sys::RegistryRead::valueUnreadable:
        sys::ExitWithMessage("Registry read failed!", "Hiba!", sys::mbOk);
    case sys::RegistryRead::ok:
        break;
    }
    return steamPath + "/steamapps/";
}

std::vector<SteamAccount> FindGames(const std::string& steamappsPath)
{
    std::vector<SteamAccount> accounts;
    for (const std::string& name : sys::ListFolder(steamappsPath)) {
        // "." and ".." are tested like any other entry: the tests decide what counts.
        std::string folder = steamappsPath + name;
        SteamAccount account;
        account.name = name;
        account.hasCs16 = sys::PathExists(folder + "/counter-strike");
        account.hasCss = sys::PathExists(folder + "/counter-strike source");
        account.hasCs16Backup = sys::PathExists(folder + "/cs16ludax.bak");
        account.hasCssBackup = sys::PathExists(folder + "/cssludax.bak");
        if (account.hasCs16 || account.hasCss || account.hasCs16Backup || account.hasCssBackup)
            accounts.push_back(account);
    }
    if (accounts.empty())
        sys::ExitWithMessage("Nincs feltelepítve (és legalább egyszer elindítva) sem a Counter "
                             "Strike sem a Counter Strike Source!\nKilépek!",
                             "Hiba:", sys::mbOk | sys::mbIconError);
    return accounts;
}

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
