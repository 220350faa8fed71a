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

BackupFiles BackupFilesOf(const PlaceGame& game, const SteamAccount& place)
{
    const std::string removalList = place.folder + "/" + game.removalListName;
    return {place.folder + "/" + game.archiveName, removalList, removalList + ".new",
            place.folder + "/" + game.recordName};
}

std::string GameMarker(const PlaceGame& game, const SteamAccount& place)
{
    return place.library ? place.*game.gameFolder + "/cstrike" : place.*game.gameFolder;
}
