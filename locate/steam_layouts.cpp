#include "steam_layouts.h"

namespace {

// What tells the two games apart at a place: their folders' names in each layout, and the names
// of their backup files.
struct GameNames {
    const char* accountFolder;   // in an account folder
    const char* libraryFolder;   // in a library's steamapps/common
    const char* libraryContent;  // below the library's game folder, where the files go
    const char* archive;
    const char* removalList;
    const char* record;
};

const GameNames& NamesOf(GameId id)
{
    static const GameNames cs16{"counter-strike",  "Half-Life", "cstrike/", "cs16ludax.bak", "cs16ludax_1.bak",
                                "cs16ludax_2.bak"};
    static const GameNames css{"counter-strike source", "Counter-Strike Source", "cstrike/custom/ludax/",
                               "cssludax.bak",          "cssludax_1.bak",        "cssludax_2.bak"};
    return id == GameId::css ? css : cs16;
}

// The game at `place`, whose folder is `gameFolder`, its presence marked by `marker`, its files
// going to `contentFolder`.
void Lay(SteamAccount& place, GameId id, const std::string& gameFolder, const std::string& marker,
         const std::string& contentFolder)
{
    const GameNames& names = NamesOf(id);
    const std::string removalList = place.folder + "/" + names.removalList;
    place.Game(id) = {id, gameFolder, marker, contentFolder,
                      {place.folder + "/" + names.archive, removalList, removalList + ".new", place.folder + "/" + names.record},
                      false, false};
}

}  // namespace

SteamAccount AccountFolderEntry(const std::string& steamappsPath, const std::string& name)
{
    SteamAccount account;
    account.name = name;
    account.folder = steamappsPath + name;
    for (GameId id : bothGames) {
        const std::string game = account.folder + "/" + NamesOf(id).accountFolder;
        Lay(account, id, game, game, game + "/cstrike/");
    }
    return account;
}

SteamAccount LibraryEntry(const std::string& libraryPath)
{
    SteamAccount library;
    library.name = libraryPath;
    library.library = true;
    library.folder = libraryPath + "/steamapps/common";
    for (GameId id : bothGames) {
        const std::string game = library.folder + "/" + NamesOf(id).libraryFolder;
        Lay(library, id, game, game + "/cstrike", game + "/" + NamesOf(id).libraryContent);
    }
    return library;
}
