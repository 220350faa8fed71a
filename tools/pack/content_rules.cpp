#include "content_rules.h"

#include <algorithm>
#include <cstddef>
#include <set>

#include "text_encoding.h"

namespace {

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// Lines split at LF with a CR before it dropped; numbered from 1.
std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t end = text.find('\n', begin);
        if (end == std::string::npos)
            end = text.size();
        std::size_t stop = end > begin && text[end - 1] == '\r' ? end - 1 : end;
        lines.push_back(text.substr(begin, stop - begin));
        begin = end + 1;
    }
    return lines;
}

// A console line's words: split at blanks, ';' and '"', up to a "//" comment outside quotes.
std::vector<std::string> Words(const std::string& line)
{
    std::vector<std::string> words;
    std::string word;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (!quoted && c == '/' && i + 1 < line.size() && line[i + 1] == '/')
            break;
        if (c == '"')
            quoted = !quoted;
        if (c == ' ' || c == '\t' || c == ';' || c == '"') {
            if (!word.empty())
                words.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    if (!word.empty())
        words.push_back(word);
    return words;
}

// Text saved as UTF-16 (Notepad's "Unicode"): it begins with a byte-order mark or, without one,
// at least half of its two-byte characters are ASCII ones in one byte order.
bool LooksLikeUtf16(const std::string& bytes)
{
    if (bytes.size() < 2)
        return false;
    const unsigned char first = bytes[0], second = bytes[1];
    if ((first == 0xFF && second == 0xFE) || (first == 0xFE && second == 0xFF))
        return true;
    if (bytes.size() % 2 != 0)
        return false;
    std::size_t littleEndian = 0, bigEndian = 0;  // characters that read as ASCII in that byte order
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const bool lowZero = bytes[i] == '\0', highZero = bytes[i + 1] == '\0';
        littleEndian += !lowZero && highZero;
        bigEndian += lowZero && !highZero;
    }
    return 2 * std::max(littleEndian, bigEndian) >= bytes.size() / 2;
}

class ContentChecker {
public:
    ContentChecker(const std::string& setFolder, const std::vector<std::string>& names, std::vector<Finding>& out)
        : folder(setFolder), findings(out)
    {
        for (const std::string& name : names)
            folded.insert(AsciiLower(name));
    }

    void Check(const std::string& name)
    {
        const bool text = IsTextRecord(name);
        const std::string key = AsciiLower(name);
        const bool scripts = key == "cfg/valve.rc" || key == "cfg/ludax/binds.cfg";
        const bool layout = key == "resource/backgroundlayout.txt" || key == "resource/backgroundloadinglayout.txt";
        const bool mapcycle = key == "mapcycle.txt";
        if (!text && !scripts && !layout && !mapcycle)
            return;
        std::string bytes;
        if (!ReadWhole(folder + "/" + name, bytes)) {
            Add(true, Path(name), "cannot read the file");
            return;
        }
        // Read as bytes, UTF-16 shows lone line ends and zero bytes on every line: one error says it all.
        if (text && LooksLikeUtf16(bytes)) {
            Add(true, Path(name), "saved as UTF-16; save it as plain text (ANSI or UTF-8) with CR LF line ends");
            return;
        }
        if (text)
            CheckLineEnds(name, bytes);
        const std::vector<std::string> lines = Lines(bytes);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const std::string where = Path(name) + ":" + std::to_string(i + 1);
            const std::vector<std::string> words = Words(lines[i]);
            if (text)
                CheckPassword(where, words);
            if (scripts)
                CheckExecs(where, words);
            if (layout)
                CheckTile(where, words);
            if (mapcycle)
                CheckMap(where, words);
        }
    }

private:
    std::string Path(const std::string& name) const { return folder + "/" + name; }

    void Add(bool error, const std::string& where, const std::string& message)
    {
        findings.push_back({error, where, message});
    }

    bool InSet(const std::string& name) const { return folded.count(AsciiLower(name)) != 0; }

    // The game's text files use CR LF; a file saved with LF or holding zero bytes (UTF-16, say)
    // reads as garbage in the console. The first fault is shown, with how many lines share it.
    void CheckLineEnds(const std::string& name, const std::string& bytes)
    {
        int line = 1, firstLf = 0, firstCr = 0, firstZero = 0, lfs = 0, crs = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const char c = bytes[i];
            if (c == '\n' && (i == 0 || bytes[i - 1] != '\r') && ++lfs == 1)
                firstLf = line;
            if (c == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n') && ++crs == 1)
                firstCr = line;
            if (c == '\0' && firstZero == 0)
                firstZero = line;
            if (c == '\n')
                ++line;
        }
        const auto more = [](int count) {
            return count > 1 ? " (and " + std::to_string(count - 1) + " more)" : std::string();
        };
        if (firstLf)
            Add(true, Path(name) + ":" + std::to_string(firstLf),
                "line ends in a lone LF" + more(lfs) + "; save the file with CR LF line ends");
        if (firstCr)
            Add(true, Path(name) + ":" + std::to_string(firstCr),
                "a lone CR" + more(crs) + "; save the file with CR LF line ends");
        if (firstZero)
            Add(true, Path(name) + ":" + std::to_string(firstZero),
                "holds a zero byte; save the file as plain text (ANSI or UTF-8, not UTF-16)");
    }

    void CheckPassword(const std::string& where, const std::vector<std::string>& words)
    {
        for (std::size_t i = 0; i + 1 < words.size(); ++i)
            if (AsciiLower(words[i]) == "rcon_password" && words[i + 1] == "CHANGE_ME")
                Add(false, where, "the remote-console password is still the placeholder CHANGE_ME; "
                                  "put the tournament's password in its place");
    }

    // Script paths are relative to the game's cfg folder, with '\' or '/'; the game adds ".cfg"
    // to a name without an extension. The player's own autoexec.cfg and joystick.cfg may be absent.
    void CheckExecs(const std::string& where, const std::vector<std::string>& words)
    {
        for (std::size_t i = 0; i + 1 < words.size(); ++i) {
            if (AsciiLower(words[i]) != "exec")
                continue;
            std::string path = words[i + 1];
            for (char& c : path)
                if (c == '\\')
                    c = '/';
            const std::size_t slash = path.rfind('/');
            if (path.find('.', slash == std::string::npos ? 0 : slash) == std::string::npos)
                path += ".cfg";
            const std::string key = AsciiLower(path);
            if (key == "autoexec.cfg" || key == "joystick.cfg" || InSet("cfg/" + path))
                continue;
            Add(true, where, "exec " + words[i + 1] + " names no file of the set (the game looks for cfg/" + path +
                                 "); add that file to the set and its manifest, or correct the path");
        }
    }

    // A layout line is "<tile file> scaled <x> <y>" after its "resolution" line.
    void CheckTile(const std::string& where, const std::vector<std::string>& words)
    {
        if (words.empty() || AsciiLower(words[0]) == "resolution")
            return;
        std::string tile = words[0];
        for (char& c : tile)
            if (c == '\\')
                c = '/';
        if (!InSet(tile))
            Add(true, where, "the tile " + words[0] + " is not a file of the set; add it to the set and its "
                             "manifest, or correct the name");
    }

    void CheckMap(const std::string& where, const std::vector<std::string>& words)
    {
        // The maps every copy of either game brings with it.
        static const std::set<std::string> stock = {
            "as_oilrig",   "cs_747",     "cs_assault", "cs_backalley", "cs_compound", "cs_estate",  "cs_havana",
            "cs_italy",    "cs_militia", "cs_office",  "cs_siege",     "de_airstrip", "de_aztec",   "de_cbble",
            "de_chateau",  "de_dust",    "de_dust2",   "de_inferno",   "de_nuke",     "de_piranesi", "de_port",
            "de_prodigy",  "de_storm",   "de_survivor", "de_tides",    "de_torn",     "de_train",   "de_vertigo"};
        if (words.empty() || stock.count(AsciiLower(words[0])) || InSet("maps/" + words[0] + ".bsp"))
            return;
        Add(false, where, "the map " + words[0] + " is neither shipped by the set (maps/" + words[0] +
                              ".bsp) nor one of the game's own; add the map or correct the name");
    }

    std::string folder;
    std::vector<Finding>& findings;
    std::set<std::string> folded;  // the set's names, in lower case: Windows finds files either way
};

}  // namespace

bool IsTextRecord(const std::string& name)
{
    const std::string key = AsciiLower(name);
    for (const char* kind : {".cfg", ".rc", ".txt", ".res", ".lst", ".scr", ".gam", ".htm"})
        if (EndsWith(key, kind))
            return true;
    return false;
}

void CheckContents(const std::string& setFolder, const std::vector<std::string>& names,
                   std::vector<Finding>& findings)
{
    ContentChecker checker(setFolder, names, findings);
    for (const std::string& name : names)
        checker.Check(name);
}
