#include "steam_layouts.h"

SteamAccount AccountFolderEntry(const std::string& steamappsPath, const std::string& name)
{
    SteamAccount account;
    account.name = name;
    account.folder = steamappsPath + name;
    account.cs16Game = account.folder + "/counter-strike";
    account.cssGame = account.folder + "/counter-strike source";
    account.cs16Content = account.cs16Game + "/cstrike/";
    account.cssContent = account.cssGame + "/cstrike/";
    return account;
}

SteamAccount LibraryEntry(const std::string& libraryPath)
{
    SteamAccount library;
    library.name = libraryPath;
    library.library = true;
    library.folder = libraryPath + "/steamapps/common";
    library.cs16Game = library.folder + "/Half-Life";
    library.cssGame = library.folder + "/Counter-Strike Source";
    library.cs16Content = library.cs16Game + "/cstrike/";
    library.cssContent = library.cssGame + "/cstrike/custom/ludax/";
    return library;
}

std::string Cs16Marker(const SteamAccount& place) { return place.library ? place.cs16Game + "/cstrike" : place.cs16Game; }

std::string CssMarker(const SteamAccount& place) { return place.library ? place.cssGame + "/cstrike" : place.cssGame; }
