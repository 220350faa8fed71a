#include "worst_removal_lists.h"

#include <algorithm>
#include <fstream>
#include <functional>

#include "container.h"
#include "steam_layouts.h"
#include "system.h"
#include "windows_names.h"

namespace bench {

namespace {

const WorstList lists[worstListCount] = {
    {"14 long spellings, then short lines",
     "14 lines of 32,767 characters each name the game's folder in a spelling of its own, and every "
     "later line, 37 characters, in a 15th: the uninstall holds each line against every spelling "
     "noted before it"},
    {"deep lines of look-alike folders",
     "each line, 32,767 characters, mostly one-letter folders, names 7 look-alikes of the game's "
     "folder and then the folder, in 15 spellings: 8 places tried and 16 spellings cut a line"},
    {"the same in code page 1252",
     "the lines above with each one-letter folder the byte 0x80 (the euro sign in code page 1252), "
     "which the reader counts as no UTF-16 unit: 32,767 folders a line, and about 65,300 units once "
     "read, nearly twice the longest path a line may have to be read at all"},
    {"distinct missing paths",
     "as many short lines as fit, each naming another file that is not there, in the deepest "
     "folder the game's set makes"},
};

// The game's folder and its content folder as an account folder names them: "counter-strike",
// "cstrike".
struct GameNames {
    std::string game, content;
};

GameNames NamesOf(const GameProfile& game)
{
    const SteamAccount place = AccountFolderEntry("", "a");
    const std::string& folder = place.Game(game.id).gameFolder;
    const std::string& content = place.Game(game.id).contentFolder;
    return {folder.substr(folder.rfind('/') + 1), content.substr(folder.size() + 1, content.size() - folder.size() - 2)};
}

// "steamapps\a\<game>\": a line names the game's folder by these segments.
std::string Marker(const GameNames& names) { return "steamapps\\a\\" + names.game + "\\"; }

// `head` and `tail` joined by one-letter folders, `bytes` long in all: Windows reads them as folders
// above Steam's, and each costs whoever cuts the line into folders as much as a long one would.
// The letter is 'a', or 0x80, a byte of code page 1252 that the reader counts as no UTF-16 unit.
std::string Deepened(const std::string& head, const std::string& tail, std::size_t bytes, char letter)
{
    std::string line = head;
    std::size_t filler = bytes - head.size() - tail.size();
    if (filler % 2 == 1) {
        line += std::string(2, letter) + "\\";
        filler -= 3;
    }
    for (; filler > 0; filler -= 2)
        line += std::string(1, letter) + "\\";
    return line + tail;
}

// The bytes of a deepened line as long as the reader reads one: 32,767 units, which letters of
// no unit make twice as many bytes.
std::size_t LongestDeepened(const std::string& head, const std::string& tail, char letter)
{
    const std::size_t ends = head.size() + tail.size();
    return letter == 'a' ? sys::maxPathUnits : ends + 2 * (sys::maxPathUnits - ends);
}

// `line`, or when less than twice its length is left of the list, the line lengthened by
// separators after its root "C:\\", which name nothing else, to fill what is left exactly; when
// not even the line fits, separators alone, which name nothing.
std::string Ending(const std::string& line, std::size_t room)
{
    if (room >= 2 * line.size() + 1)
        return line;
    if (room < line.size())
        return std::string(room, '\\');
    std::string padded = line;
    padded.insert(3, room - line.size(), '\\');
    return padded;
}

// "s<i>\" for i below `spellings`, the last of them again for every later i: one spelling of
// the folders above Steam's for each of the first lines, then one for all.
std::string Spelling(std::size_t i, std::size_t spellings) { return "s" + std::to_string(std::min(i, spellings - 1)) + "\\"; }

// The deepest folder the game's set makes below its content folder, with '\'.
std::string DeepestSetFolder(const GameProfile& game)
{
    std::string deepest;
    const auto depth = [](const std::string& folder) { return std::count(folder.begin(), folder.end(), '/'); };
    WalkRecords(game.payload->start, game.payload->length, 0, [&](const ContainerRecord& record) {
        const std::size_t end = record.name.rfind('/');
        const std::string folder = end == std::string::npos ? std::string() : record.name.substr(0, end);
        if (!folder.empty() && (deepest.empty() || depth(folder) > depth(deepest)))
            deepest = folder;
        return true;
    });
    std::replace(deepest.begin(), deepest.end(), '/', '\\');
    return deepest;
}

// Names in letters and digits, each once, that Windows reads as files (no device such as
// "con"), its letters without case: the next one at each call.
class FileNames {
public:
    std::string Next()
    {
        for (;; ++count) {
            std::string name;
            for (std::size_t rest = count; name.empty() || rest > 0; rest /= 36)
                name += "0123456789abcdefghijklmnopqrstuvwxyz"[rest % 36];
            if (IsWindowsName(name)) {
                ++count;
                return name;
            }
        }
    }

private:
    std::size_t count = 0;
};

// Lines line(0, room), line(1, room), ... each ended by LF, until the list is `bytes` long; `room`
// is what is left for the line, which is at most that long.
std::string Lines(std::uint64_t bytes, const std::function<std::string(std::size_t, std::size_t)>& line)
{
    std::string text;
    text.reserve(bytes);
    for (std::size_t i = 0; text.size() < bytes; ++i)
        text += line(i, bytes - text.size() - 1) + "\n";
    return text;
}

}  // namespace

const WorstList& WorstListAt(int index) { return lists[index]; }

void WriteWorstList(int index, const GameProfile& game, const std::string& path, std::uint64_t bytes)
{
    const GameNames names = NamesOf(game);
    const std::string tail = Marker(names) + names.content;
    const std::string shortLine = "C:\\" + tail;
    std::string lookAlikes;
    for (int candidate = 0; candidate < 7; ++candidate)
        lookAlikes += Marker(names);
    const std::string folder = shortLine + "\\" + DeepestSetFolder(game) + "\\";
    // A deepened line as long as the reader reads, or what is left of the list.
    const auto deep = [&](const std::string& head, char letter, std::size_t room) {
        if (room < head.size() + tail.size() + 3)
            return Ending(shortLine, room);
        return Deepened(head, tail, std::min(LongestDeepened(head, tail, letter), room), letter);
    };
    std::function<std::string(std::size_t, std::size_t)> line;
    switch (index) {
    case 0:
        line = [&](std::size_t i, std::size_t room) {
            return i < 14 ? deep("C:\\" + Spelling(i, 14), 'a', room) : Ending(shortLine, room);
        };
        break;
    case 1:
    case 2:
        line = [&, letter = index == 1 ? 'a' : '\x80'](std::size_t i, std::size_t room) {
            return deep("C:\\" + lookAlikes + Spelling(i, 15), letter, room);
        };
        break;
    default:
        line = [&, files = FileNames()](std::size_t, std::size_t room) mutable {
            return Ending(folder + files.Next(), room);
        };
    }
    std::ofstream(path, std::ios::binary) << Lines(bytes, line);
}

}  // namespace bench
