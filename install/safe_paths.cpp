#include "safe_paths.h"

#include <algorithm>
#include <vector>

#include "find_games.h"
#include "resolved_path.h"
#include "system.h"
#include "text_encoding.h"
#include "windows_names.h"

namespace {

// How many places of one removal line LineAtPlace tries as the game's folder.
constexpr std::size_t maxGameFolderCandidates = 8;

// How many spellings of game folders the backup files' lines and record are looked at for.
constexpr std::size_t maxNamedGames = 16;

}  // namespace

bool IsBelow(const std::string& path, const std::string& folder)
{
    return path.size() > folder.size() + 1 && path.compare(0, folder.size(), folder) == 0 &&
           path[folder.size()] == '/';
}

bool IsRemovableLine(const std::string& path, const std::string& gameFolder, const std::string& contentFolder)
{
    const std::string prefix = gameFolder + "/";
    if (path.size() <= prefix.size() || path.compare(0, prefix.size(), prefix) != 0 ||
        !IsWindowsName(path.substr(prefix.size())))
        return false;
    const bool belowContent = path.size() > contentFolder.size() && path.compare(0, contentFolder.size(), contentFolder) == 0;
    const bool onTheWay = contentFolder.compare(0, path.size(), path) == 0 && contentFolder[path.size()] == '/';
    return belowContent || onTheWay;
}

sys::Status WayTo(const std::string& contentFolder, const std::string& path, KnownFolders* known)
{
    const sys::Status link = sys::Status::Failed(sys::Reason::Refused(sys::Reason::Own::link));
    if (path.size() <= contentFolder.size() || path.compare(0, contentFolder.size(), contentFolder) != 0)
        return sys::Status();
    for (std::size_t end = path.find('/', contentFolder.size());; end = path.find('/', end + 1)) {
        const std::string step = path.substr(0, end == std::string::npos ? path.size() : end);
        if (known && known->count(step)) {
            if (known->at(step))
                return link;
        } else {
            const sys::Entry entry = sys::LookUp(step);
            if (entry.kind == sys::EntryKind::none)
                return sys::Status();
            if (entry.kind == sys::EntryKind::unknown)
                return sys::Status::Failed(entry.reason);
            if (known && entry.kind == sys::EntryKind::folder)
                (*known)[step] = entry.link;
            if (entry.link)
                return link;
        }
        if (end == std::string::npos)
            return sys::Status();
    }
}

namespace {

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

bool IsDriveLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// The length of a "server\share\" (either separator) at `at`, both names there; 0 for none.
std::size_t ShareLength(const std::string& line, std::size_t at)
{
    std::size_t end = at;
    for (int name = 0; name < 2; ++name) {
        const std::size_t begin = end;
        while (end < line.size() && !IsSeparator(line[end]))
            ++end;
        if (end == begin || end == line.size())
            return 0;
        ++end;
    }
    return end - at;
}

// The length of the root an absolute path begins with; 0 for a path that is not absolute.
std::size_t RootLength(const std::string& line)
{
    const auto drive = [&](std::size_t at) {
        return line.size() > at + 2 && IsDriveLetter(line[at]) && line[at + 1] == ':' && IsSeparator(line[at + 2]);
    };
    if (drive(0))
        return 3;
    if (line.size() < 3 || !IsSeparator(line[0]) || !IsSeparator(line[1])) {
        // Natively the tests' folders are POSIX paths; Windows reads "\x" as relative to the drive.
        return sys::posixPathsToo && !line.empty() && line[0] == '/' ? 1 : 0;
    }
    if (line[2] == '?' && line.size() > 3 && IsSeparator(line[3])) {
        if (drive(4))
            return 7;
        const std::string unc = AsciiLower(line.substr(4, 4));
        const std::size_t share = unc.size() == 4 && unc.compare(0, 3, "unc") == 0 && IsSeparator(unc[3]) ? ShareLength(line, 8) : 0;
        return share ? 8 + share : 0;
    }
    const std::size_t share = IsSeparator(line[2]) || line[2] == '?' || line[2] == '.' ? 0 : ShareLength(line, 2);
    return share ? 2 + share : 0;
}

}  // namespace

bool IsAbsolutePathLine(const std::string& line)
{
    const std::size_t root = RootLength(line);
    if (root == 0)
        return false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(line[i]);
        if (c < 0x20 || (i >= root && (c == '<' || c == '>' || c == ':' || c == '"' || c == '|' || c == '?' || c == '*')))
            return false;
    }
    return true;
}

namespace {

// True when `tail` (segments below the game's folder, as a line has them) names what an install
// writes: something below the content folder, or one of the folders down to it, whose segments
// `content` gives (IsRemovableLine's rule, segment by segment). `validFrom[i]` tells whether the
// tail's segments from i on are each a Windows name.
bool RemovableTail(const std::vector<std::string>& segments, std::size_t first, const std::vector<bool>& validFrom,
                   const std::vector<std::string>& content)
{
    const std::size_t length = segments.size() - first;
    if (length == 0 || !validFrom[first])
        return false;
    for (std::size_t i = 0; i < std::min(length, content.size()); ++i)
        if (segments[first + i] != content[i])
            return false;
    return true;  // below the content folder, the content folder, or a folder on the way to it
}

}  // namespace

LinePlacer::LinePlacer(const SteamAccount& place, GameId game)
    : gameFolder(place.Game(game).gameFolder), library(place.library), own(ResolvePath(gameFolder).segments),
      content(ResolvePath(place.Game(game).contentFolder.substr(gameFolder.size() + 1)).segments)
{
}

PlacedLine LinePlacer::Place(const std::string& line) const
{
    // The game's folder ends in steamapps/<account>/<game> or steamapps/common/<game>; a line
    // names it by the same three segments, the account's in any spelling.
    if (own.size() < 3 || !IsAbsolutePathLine(line))
        return {};
    ResolvedPath resolved = ResolvePath(line);
    const std::vector<std::string>& segments = resolved.segments;
    // Which stretches of segments up to the end are Windows names, from the end: each candidate
    // for the game's folder then costs a few comparisons, so a line costs time in proportion to
    // its length.
    std::vector<bool> validFrom(segments.size() + 1, true);
    for (std::size_t i = segments.size(); i-- > 0;)
        validFrom[i] = validFrom[i + 1] && IsWindowsName(segments[i]);
    // A path an install wrote names a game folder once, or a few times when the folders above
    // Steam's happen to look like one; a line naming more is passed over.
    std::size_t candidates = 0;
    for (std::size_t index = 2; index < segments.size(); ++index) {
        if (!SameIgnoringAsciiCase(segments[index], own.back()) ||
            !SameIgnoringAsciiCase(segments[index - 2], own[own.size() - 3]) ||
            (library && !SameIgnoringAsciiCase(segments[index - 1], own[own.size() - 2])))
            continue;
        if (++candidates > maxGameFolderCandidates)
            break;
        if (!RemovableTail(segments, index + 1, validFrom, content))
            continue;
        std::string path = gameFolder;
        for (std::size_t next = index + 1; next < segments.size(); ++next)
            path.append("/").append(segments[next]);
        resolved.segments.resize(index + 1);
        return {path, JoinResolved(resolved, '/')};
    }
    return {};
}

void NamedGames::Note(const std::string& gameFolder)
{
    if (gameFolder.empty() || gameFolder == last || folders.size() == maxNamedGames)
        return;
    last = gameFolder;
    const std::string key = PlaceKey(gameFolder);
    if (std::find(keys.begin(), keys.end(), key) != keys.end())
        return;
    folders.push_back(gameFolder);
    keys.push_back(key);
}

Belonging GameTheyBelongTo(const std::vector<std::string>& named, const SteamAccount& place, GameId game,
                           const std::vector<SteamAccount>& places)
{
    const std::string& here = place.Game(game).gameFolder;
    std::vector<std::string> others;  // named in another spelling than this place's folder
    for (const std::string& folder : named)
        if (PlaceKey(folder) != PlaceKey(here))
            others.push_back(folder);
    Belonging belonging;
    // The identity of what stands at `folder`; false when nothing does, or when the system could
    // not tell (noted: whoever must not guess stops).
    const auto identify = [&](const std::string& folder, sys::Identity& identity) {
        const sys::Entry entry = sys::LookUp(folder);
        if (entry.kind == sys::EntryKind::none)
            return false;
        const sys::Status known = entry.kind == sys::EntryKind::unknown ? sys::Status::Failed(entry.reason)
                                                                         : sys::IdentityOf(folder, identity);
        if (!known)
            belonging.unknown.NoteFirst(folder, known.Why());
        return static_cast<bool>(known);
    };
    if (others.empty())
        return belonging;
    // Each folder asked about once: the other places where the game is, then what is named.
    std::vector<std::pair<const std::string*, sys::Identity>> theirs;
    for (const SteamAccount& other : places) {
        sys::Identity identity;
        const GameAtPlace& there = other.Game(game);
        if (there.present && PlaceKey(there.gameFolder) != PlaceKey(here) && identify(there.gameFolder, identity))
            theirs.emplace_back(&there.gameFolder, identity);
    }
    sys::Identity hereIdentity;
    if (theirs.empty() || !identify(here, hereIdentity))
        return belonging;
    for (const std::string& folder : others) {
        sys::Identity identity;
        if (!identify(folder, identity) || identity == hereIdentity)
            continue;
        for (const auto& [path, theirIdentity] : theirs)
            if (theirIdentity == identity) {
                belonging.elsewhere = *path;
                return belonging;
            }
    }
    return belonging;
}
