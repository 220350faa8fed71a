#include "safe_paths.h"

#include <vector>

#include "resolved_path.h"
#include "system.h"
#include "text_encoding.h"
#include "windows_names.h"

namespace {

// How many places of one removal line LineAtPlace tries as the game's folder.
constexpr std::size_t maxGameFolderCandidates = 8;

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

std::string LineAtPlace(const std::string& line, const PlaceGame& game, const SteamAccount& place)
{
    const std::string& gameFolder = place.*game.gameFolder;
    // The game's folder ends in steamapps/<account>/<game> or steamapps/common/<game>; a line
    // names it by the same three segments, the account's in any spelling.
    const std::vector<std::string> own = ResolvePath(gameFolder).segments;
    if (own.size() < 3)
        return std::string();
    const std::string steamapps = AsciiLower(own[own.size() - 3]);
    const std::string common = AsciiLower(own[own.size() - 2]);
    const std::string name = AsciiLower(own.back());
    const std::vector<std::string> segments = ResolvePath(line).segments;
    // A path an install wrote names a game folder once, or a few times when the folders above
    // Steam's happen to look like one; a line naming more is passed over, at a bounded cost.
    std::size_t candidates = 0;
    for (std::size_t at = 2; at < segments.size(); ++at) {
        if (AsciiLower(segments[at]) != name || AsciiLower(segments[at - 2]) != steamapps ||
            (place.library && AsciiLower(segments[at - 1]) != common))
            continue;
        if (++candidates > maxGameFolderCandidates)
            break;
        std::string below = gameFolder;
        for (std::size_t next = at + 1; next < segments.size(); ++next)
            below += "/" + segments[next];
        if (IsRemovableLine(below, gameFolder, place.*game.contentFolder))
            return below;
    }
    return std::string();
}
