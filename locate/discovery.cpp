#include "discovery.h"

#include <algorithm>

#include "library_folders.h"
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

namespace {

const std::string steamappsSuffix = "/steamapps/";

// More libraries than any PC holds; a longer list is damage.
constexpr std::size_t libraryLimit = 1000;
// libraryfolders.vdf is a few kilobytes; only its start is read.
constexpr std::size_t libraryFileLimit = 1 << 20;

// One spelling for the ways Windows accepts of naming the same folder: letter case, '\' or '/'
// and a trailing separator make no difference there.
std::string PlaceKey(const std::string& path)
{
    std::string key;
    for (char c : path)
        key += c == '\\' ? '/' : (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
    while (!key.empty() && key.back() == '/')
        key.pop_back();
    return key;
}

void TestBackups(SteamAccount& account)
{
    account.hasCs16Backup = sys::PathExists(account.folder + "/cs16ludax.bak");
    account.hasCssBackup = sys::PathExists(account.folder + "/cssludax.bak");
}

bool HoldsAnything(const SteamAccount& account)
{
    return account.hasCs16 || account.hasCss || account.hasCs16Backup || account.hasCssBackup;
}

}  // namespace

SteamAccount AccountFolderEntry(const std::string& steamappsPath, const std::string& name)
{
    SteamAccount account;
    account.name = name;
    account.folder = steamappsPath + name;
    account.cs16Content = account.folder + "/counter-strike/cstrike/";
    account.cssContent = account.folder + "/counter-strike source/cstrike/";
    return account;
}

SteamAccount LibraryEntry(const std::string& libraryPath)
{
    SteamAccount library;
    library.name = "Steam library: " + libraryPath;
    library.folder = libraryPath + "/steamapps/common";
    library.cs16Content = library.folder + "/Half-Life/cstrike/";
    library.cssContent = library.folder + "/Counter-Strike Source/cstrike/custom/ludax/";
    return library;
}

std::vector<std::string> SteamLibraries(const std::string& steamappsPath)
{
    const std::string steamPath = steamappsPath.substr(0, steamappsPath.size() - steamappsSuffix.size());
    std::vector<std::string> libraries{steamPath};
    std::string listFile = steamappsPath + "libraryfolders.vdf";
    if (!sys::PathExists(listFile))
        listFile = steamPath + "/config/libraryfolders.vdf";
    std::string text;
    if (!sys::ReadFileStart(listFile, libraryFileLimit, text))
        return libraries;
    std::vector<std::string> seen{PlaceKey(steamPath)};
    for (const std::string& library : ParseLibraryFolders(text)) {
        const std::string key = PlaceKey(library);
        if (key.empty() || std::find(seen.begin(), seen.end(), key) != seen.end())
            continue;
        if (libraries.size() == libraryLimit)
            break;
        seen.push_back(key);
        libraries.push_back(library);
    }
    return libraries;
}

std::vector<SteamAccount> FindGames(const std::string& steamappsPath)
{
    std::vector<SteamAccount> accounts;
    for (const std::string& name : sys::ListFolder(steamappsPath)) {
        // The Steam folder's shared game folder is offered once, as the first library below.
        if (PlaceKey(name) == "common")
            continue;
        // "." and ".." are tested like any other entry: the tests decide what counts.
        SteamAccount account = AccountFolderEntry(steamappsPath, name);
        account.hasCs16 = sys::PathExists(account.folder + "/counter-strike");
        account.hasCss = sys::PathExists(account.folder + "/counter-strike source");
        TestBackups(account);
        if (HoldsAnything(account))
            accounts.push_back(account);
    }
    for (const std::string& libraryPath : SteamLibraries(steamappsPath)) {
        SteamAccount library = LibraryEntry(libraryPath);
        library.hasCs16 = sys::PathExists(library.folder + "/Half-Life/cstrike");
        library.hasCss = sys::PathExists(library.folder + "/Counter-Strike Source/cstrike");
        TestBackups(library);
        if (HoldsAnything(library))
            accounts.push_back(library);
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
