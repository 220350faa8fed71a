#include "find_games.h"

#include <algorithm>
#include <vector>

#include "libraryfolders_vdf.h"
#include "steam_layouts.h"
#include "system.h"

namespace {

const std::string steamappsSuffix = "/steamapps/";

// More libraries than any PC holds; a longer list is damage.
constexpr std::size_t libraryLimit = 1000;
// libraryfolders.vdf is a few kilobytes; only its start is read.
constexpr std::size_t libraryFileLimit = 1 << 20;

// One spelling for the ways Windows accepts of naming the same folder: letter case, '\' or '/',
// doubled and trailing separators, and "." and ".." segments make no difference there. A ".."
// never climbs above the drive or the root.
std::string PlaceKey(const std::string& path)
{
    std::string lowered;
    for (char c : path)
        lowered += c == '\\' ? '/' : (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
    const std::size_t rootEnd = lowered.find_first_not_of('/');
    const std::string root = lowered.substr(0, std::min(rootEnd, lowered.size()));
    std::vector<std::string> segments;
    std::size_t kept = 0;  // segments a ".." may take away: not the drive
    for (std::size_t begin = root.size(); begin < lowered.size();) {
        std::size_t end = std::min(lowered.find('/', begin), lowered.size());
        const std::string segment = lowered.substr(begin, end - begin);
        begin = end + 1;
        if (segment.empty() || segment == ".")
            continue;
        if (segment == "..") {
            if (kept > 0) {
                segments.pop_back();
                --kept;
            }
            continue;
        }
        segments.push_back(segment);
        if (!(segments.size() == 1 && root.empty() && segment.size() == 2 && segment[1] == ':'))
            ++kept;
    }
    std::string key = root;
    for (std::size_t i = 0; i < segments.size(); ++i)
        key += (i ? "/" : "") + segments[i];
    return key;
}

// Tests the place's game folders and backup archives; true when it holds any of them.
bool HoldsAnything(SteamAccount& place)
{
    place.hasCs16 = sys::PathExists(Cs16Marker(place));
    place.hasCss = sys::PathExists(CssMarker(place));
    place.hasCs16Backup = sys::PathExists(place.folder + "/cs16ludax.bak");
    place.hasCssBackup = sys::PathExists(place.folder + "/cssludax.bak");
    return place.hasCs16 || place.hasCss || place.hasCs16Backup || place.hasCssBackup;
}

}  // namespace

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

std::vector<SteamAccount> FindGames(const std::string& steamappsPath)
{
    std::vector<SteamAccount> places;
    for (const sys::ListedEntry& entry : sys::ListFolder(steamappsPath)) {
        // Nothing lies below a file, so a file (one of Steam's many game manifests, say) holds
        // no game; and the Steam folder's shared game folder is offered once, as the first
        // library below.
        if (!entry.folder || PlaceKey(entry.name) == "common")
            continue;
        // "." and ".." are tested like any other entry: the tests decide what counts.
        SteamAccount account = AccountFolderEntry(steamappsPath, entry.name);
        if (HoldsAnything(account))
            places.push_back(account);
    }
    for (const std::string& libraryPath : SteamLibraries(steamappsPath)) {
        SteamAccount library = LibraryEntry(libraryPath);
        if (HoldsAnything(library))
            places.push_back(library);
    }
    return places;
}
