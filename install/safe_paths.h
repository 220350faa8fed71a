#pragma once
// Where the install and the uninstall may write, create and delete: only below the game's own
// folder, never through a link below the content folder, and only names Windows reads as they
// are written (windows_names.h). Links at or above the content folder are the player's layout
// (a game moved to another drive with a junction) and are followed.

#include <string>
#include <vector>

#include "folders.h"
#include "steam_layouts.h"

// True when `path` names something inside `folder` (neither ending with '/').
bool IsBelow(const std::string& path, const std::string& folder);

// A removal-list line the uninstall may act on: a path below the content folder, or one of the
// folders from the game's folder down to the content folder (which an install makes when they
// are missing), written exactly as the install builds paths (another letter case or separator
// is somewhere else), each segment a Windows name. The backup files lie outside the game's
// folder, so no line can name them.
bool IsRemovableLine(const std::string& path, const std::string& gameFolder, const std::string& contentFolder);

// True when `line` is an absolute path as an install writes one: "X:\", "\\server\share\", or
// their "\\?\" forms ("\\?\X:\", "\\?\UNC\server\share\"), either separator (natively, where
// the tests' folders are, a POSIX "/..." too), with no control character and no character Windows
// refuses in a name. A log line, a list saved as UTF-16 or with CR-only line ends is none.
bool IsAbsolutePathLine(const std::string& line);

// A removal line placed where the game is now.
struct PlacedLine {
    std::string path;        // what it names below this game's folder at the place; empty: nothing
    std::string gameFolder;  // the game's folder as the line spells it, e.g. "D:\Steam/steamapps/p/counter-strike"
};

// What a removal line names now: the line read relative to the game's folder it names (its part
// after "steamapps/<account>/counter-strike" or ".../counter-strike source" in the layout before
// shared game folders, after "steamapps/common/Half-Life" or ".../Counter-Strike Source" in a
// library, in any letter case and whatever the spelling above it: '\' or '/', doubled
// separators, "." and ".." as Windows resolves them), placed below this game's folder at
// `place`, where its backup files lie now. So a Steam folder spelled anew, or a library back
// under another drive letter, still finds what an install made. Nothing when the line is no
// absolute path (IsAbsolutePathLine), names no folder of this game, or when its part below that
// folder is no line an install writes (IsRemovableLine). Costs time in proportion to its length;
// what it takes of the place is worked out once, for every line of a file.
class LinePlacer {
public:
    LinePlacer(const SteamAccount& place, GameId game);
    PlacedLine Place(const std::string& line) const;

private:
    std::string gameFolder;
    bool library;
    std::vector<std::string> own;      // the game's folder's segments
    std::vector<std::string> content;  // the content folder's, below the game's folder
};

inline std::string LineAtPlace(const std::string& line, const SteamAccount& place, GameId game)
{
    return LinePlacer(place, game).Place(line).path;
}

// The game's folders backup files name (as their lines and record spell them), each folder once,
// up to a few: a list an install wrote names one or two. Lines of one list mostly name one
// spelling: each costs a comparison with the one before.
class NamedGames {
public:
    void Note(const std::string& gameFolder);
    const std::vector<std::string>& Folders() const { return folders; }

private:
    std::vector<std::string> folders, keys;  // each with its PlaceKey
    std::string last;
};

// Where backup files belong.
struct Belonging {
    // The game's folder at another of the places found, when they belong there; empty when they
    // belong here.
    std::string elsewhere;
    // A folder the system could not tell about, and why: then nobody knows where they belong.
    sys::Failure unknown;
};

// Where the backup files at a place belong: to the game's folder at another of `places` when one
// of `named` (the game's folders their lines and record name) stands there now, a different
// folder by identity from this place's; here when the folder they name is this place's in
// another spelling, or one that is not there any more (the Steam folder moved, a library back
// under another drive letter).
Belonging GameTheyBelongTo(const std::vector<std::string>& named, const SteamAccount& place, GameId game,
                           const std::vector<SteamAccount>& places);

// Done when no link stands at `path` or on the way to it below `contentFolder` (which ends with
// '/'); failed for a link there (Own::link: nothing of ours lies behind it), or with the
// system's reason when it could not tell what stands there. A path at or above the content
// folder is not looked at. A missing entry ends the search: nothing deeper exists either.
sys::Status WayTo(const std::string& contentFolder, const std::string& path, KnownFolders* known);

inline bool IsLink(const sys::Status& way) { return way.Why().own == sys::Reason::Own::link; }
