#include "find_games.h"

#include <algorithm>
#include <vector>

#include "libraryfolders_vdf.h"
#include "resolved_path.h"
#include "steam_layouts.h"
#include "system.h"
#include "text_encoding.h"

namespace {

const std::string steamappsSuffix = "/steamapps/";

// More libraries than any PC holds; a longer list is damage.
constexpr std::size_t libraryLimit = 1000;
// libraryfolders.vdf is a few kilobytes; only its start is read.
constexpr std::size_t libraryFileLimit = 1 << 20;

// True when something stands at `path`; an entry the system could not tell about is noted as
// the discovery's failure, unless an earlier one was.
bool Found(const std::string& path, sys::Failure& failure)
{
    const sys::Entry entry = sys::LookUp(path);
    if (entry.kind == sys::EntryKind::unknown)
        failure.NoteFirst(path, entry.reason);
    return entry.kind == sys::EntryKind::file || entry.kind == sys::EntryKind::folder;
}

}  // namespace

bool LookAt(SteamAccount& place, sys::Failure& failure)
{
    bool anything = false;
    for (GameAtPlace& game : place.games) {
        game.present = Found(game.marker, failure);
        anything = anything || game.present;
    }
    for (GameAtPlace& game : place.games) {
        game.installed = Found(game.backup.archive, failure);
        anything = anything || game.installed;
    }
    return anything;
}

std::string PlaceKey(const std::string& path) { return AsciiLower(JoinResolved(ResolvePath(path), '/')); }

std::vector<std::string> SteamLibraries(const std::string& steamappsPath)
{
    const std::string steamPath = steamappsPath.substr(0, steamappsPath.size() - steamappsSuffix.size());
    std::vector<std::string> libraries{steamPath};
    std::vector<std::string> seen{PlaceKey(steamPath)};
    // Steam keeps its own copy in config/ since 2021; the one in steamapps/ may be older, or the
    // only one an older Steam wrote. Each library counts once, in the order they name them.
    for (const std::string& listFile : {steamappsPath + "libraryfolders.vdf", steamPath + "/config/libraryfolders.vdf"}) {
        std::string text;
        if (!sys::ReadFileStart(listFile, libraryFileLimit, text))
            continue;
        for (const std::string& library : ParseLibraryFolders(text)) {
            const std::string key = PlaceKey(library);
            if (key.empty() || std::find(seen.begin(), seen.end(), key) != seen.end())
                continue;
            if (libraries.size() == libraryLimit)
                return libraries;
            seen.push_back(key);
            libraries.push_back(library);
        }
    }
    return libraries;
}

FoundGames FindGames(const std::string& steamappsPath)
{
    FoundGames found;
    const sys::Listing listing = sys::ListFolder(steamappsPath);
    if (!listing.status)
        found.failure = {steamappsPath, listing.status.Why()};
    for (const sys::ListedEntry& entry : listing.entries) {
        // Nothing lies below a file, so a file (one of Steam's many game manifests, say) holds
        // no game; and the Steam folder's shared game folder is offered once, as the first
        // library below.
        if (!entry.folder || AsciiLower(entry.name) == "common")
            continue;
        // "." and ".." are tested like any other entry: the tests decide what counts.
        SteamAccount account = AccountFolderEntry(steamappsPath, entry.name);
        if (LookAt(account, found.failure))
            found.places.push_back(account);
    }
    for (const std::string& libraryPath : SteamLibraries(steamappsPath)) {
        SteamAccount library = LibraryEntry(libraryPath);
        if (LookAt(library, found.failure))
            found.places.push_back(library);
    }
    return found;
}
