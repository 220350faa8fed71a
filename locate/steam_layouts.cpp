#include "steam_layouts.h"

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
    library.name = libraryPath;
    library.library = true;
    library.folder = libraryPath + "/steamapps/common";
    library.cs16Content = library.folder + "/Half-Life/cstrike/";
    library.cssContent = library.folder + "/Counter-Strike Source/cstrike/custom/ludax/";
    return library;
}

std::string Cs16GameFolder(const SteamAccount& place)
{
    return place.folder + (place.library ? "/Half-Life/cstrike" : "/counter-strike");
}

std::string CssGameFolder(const SteamAccount& place)
{
    return place.folder + (place.library ? "/Counter-Strike Source/cstrike" : "/counter-strike source");
}
