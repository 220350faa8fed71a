// The check every build runs before packing, rule by rule, on small sets written here: each
// fault is reported at its file and line with what to do, and a sound set passes untouched.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "set_check.h"
#include "test_files.h"
#include "text_encoding.h"

namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

// A set folder and its manifest in a fresh temporary folder; files are given with their bytes.
struct Set {
    TempFolder temp;
    std::string folder = temp.Path() + "/css";
    std::string manifest = temp.Path() + "/css.manifest";

    explicit Set(const Files& files)
    {
        MakeFolders(folder);
        std::string lines;
        for (const auto& file : files) {
            WriteFile(folder + "/" + file.first, file.second);
            lines += file.first + "\r\n";
        }
        WriteFile(manifest, lines);
    }
    std::string At(const std::string& name, int line) const { return folder + "/" + name + ":" + std::to_string(line); }
};

// A set that uses every rule and breaks none: the tests below each break one thing and expect
// exactly one finding, so the sound set itself must pass without a word.
Files SoundFiles()
{
    return {
        {"cfg/valve.rc", "//exec default.cfg\r\nexec joystick.cfg\r\nexec Autoexec.cfg\r\n"
                         "exec ludax\\combo.cfg\r\nexec ludax/binds\r\nstuffcmds\r\n"},
        {"cfg/ludax/binds.cfg", "alias lo3 \"rcon exec ludax/live\"\r\nalias mill \"rcon changelevel de_x\r\n"},
        {"cfg/ludax/combo.cfg", "alias buyall \"buy m4a1; buy vest\"\r\n"},
        {"cfg/ludax/live.cfg", "mp_freezetime 10\r\n"},
        {"cfg/ludax/rconpassword.cfg", "// CHANGE_ME is the placeholder\r\nrcon_password \"s3cret\"\r\n"},
        {"mapcycle.txt", "de_dust2\r\nde_x\r\n"},
        {"maps/de_x.bsp", std::string("\x1E\0\0\0\n\n\r", 7)},
        {"resource/BackgroundLayout.txt", "resolution\t1280\t1024\r\nresource/background/t1.tga\tscaled\t0\t0\r\n"},
        {"resource/background/t1.tga", std::string("\0\0\x02\n", 4)},
    };
}

Files SoundFilesWith(const std::string& name, const std::string& bytes)
{
    auto files = SoundFiles();
    for (auto& file : files)
        if (file.first == name) {
            file.second = bytes;
            return files;
        }
    files.emplace_back(name, bytes);
    return files;
}

// `text` as Notepad saves it in UTF-16: either byte order, with or without the byte-order mark.
std::string Utf16(const std::string& text, bool bigEndian, bool mark)
{
    std::u16string units = mark ? u"\uFEFF" : u"";
    std::u16string converted;
    ToUtf16(text, converted);
    units += converted;
    std::string bytes;
    for (char16_t unit : units) {
        const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

std::string All(const SetCheck& check)
{
    std::string text;
    for (const Finding& finding : check.findings)
        text += Describe(finding) + "\n";
    return text;
}

// Exactly one finding, of the given severity, at `where`, whose message holds each of `mentions`.
void ExpectOnly(const SetCheck& check, bool error, const std::string& where, const std::vector<std::string>& mentions)
{
    ASSERT_EQ(check.findings.size(), 1u) << All(check);
    const Finding& finding = check.findings[0];
    EXPECT_EQ(finding.error, error) << All(check);
    EXPECT_EQ(finding.where, where);
    for (const std::string& mention : mentions)
        EXPECT_NE(finding.message.find(mention), std::string::npos) << "\"" << finding.message << "\" lacks \"" << mention << "\"";
    EXPECT_EQ(check.Passed(), !error);
}

}  // namespace

TEST(SetCheck, NamesDifferingOnlyInLetterCase)
{
    {
        SCOPED_TRACE("two lines");
        Set set(Files{{"cfg/binds.cfg", "a\r\n"}, {"cfg/other.cfg", "b\r\n"}});
        WriteFile(set.manifest, "cfg/binds.cfg\ncfg/other.cfg\ncfg/Binds.cfg\n");
        ExpectOnly(CheckSet(set.folder, set.manifest), true, set.manifest + ":3",
                   {"\"cfg/Binds.cfg\" differs only in letter case from \"cfg/binds.cfg\" on line 1",
                    "rename or remove one"});
    }
#ifndef _WIN32
    {
        // Windows would find the file either way; a case-sensitive build machine must not refuse
        // it as missing and unnamed, but say what the typo is.
        SCOPED_TRACE("typo against the folder");
        Set set(Files{{"cfg/ludax/binds.cfg", "a\r\n"}});
        WriteFile(set.manifest, "cfg/Ludax/binds.cfg\r\n");
        ExpectOnly(CheckSet(set.folder, set.manifest), true, set.manifest + ":1",
                   {"\"cfg/Ludax/binds.cfg\" differs only in letter case from \"cfg/ludax/binds.cfg\"",
                    "write the line as the file is named"});
    }
#endif
}

TEST(SetCheck, TextRecordsNeedCrLfAndNoZeroBytesOthersAreOpaque)
{
    for (const char* kind : {".cfg", ".rc", ".txt", ".res", ".lst", ".scr", ".gam", ".htm"}) {
        SCOPED_TRACE(kind);
        Set set(Files{{std::string("f") + kind, "line\n"}});
        EXPECT_FALSE(CheckSet(set.folder, set.manifest).Passed());
    }
    // Other kinds are opaque bytes.
    Set binaries(Files{{"custom.hpk", std::string("\n\r\0", 3)}, {"game.ico", "\n"}, {"maps/a.bsp", "\r"}});
    EXPECT_EQ(All(CheckSet(binaries.folder, binaries.manifest)), "");
}

// The sound set with one file changed or added: exactly one finding, an error or a warning, at
// the file's line (0: the file itself).
TEST(SetCheck, EachRuleNamesTheOneFileAndLineThatBreaksIt)
{
    const std::string layoutWithT2 =
        "resolution\t1280\t1024\r\nresource/background/t1.tga\tscaled\t0\t0\r\nresource/background/t2.tga\tscaled\t256\t0\r\n";
    const std::string utf16 = "saved as UTF-16; save it as plain text (ANSI or UTF-8) with CR LF line ends";
    const struct {
        std::string name, bytes;
        bool error;
        int line;
        std::vector<std::string> mentions;
    } cases[] = {
        {"cfg/valve.rc", "exec joystick.cfg\r\n\r\nexec ludax\\combo.cfg\r\nexec ludax\\gone.cfg\r\n", true, 4,
         {"exec ludax\\gone.cfg names no file of the set", "cfg/ludax/gone.cfg",
          "add that file to the set and its manifest, or correct the path"}},
        // The game adds ".cfg" to a bare name.
        {"cfg/ludax/binds.cfg", "alias lo3 \"rcon exec ludax/live\"\r\nalias go \"rcon exec ludax/warmup\"\r\n", true, 2,
         {"exec ludax/warmup names no file of the set", "cfg/ludax/warmup.cfg"}},
        {"resource/BackgroundLayout.txt", layoutWithT2, true, 3,
         {"the tile resource/background/t2.tga is not a file of the set", "add it"}},
        {"resource/BackgroundLoadingLayout.txt", layoutWithT2, true, 3,
         {"the tile resource/background/t2.tga is not a file of the set", "add it"}},
        {"cfg/ludax/rconpassword.cfg", "// the organiser's password\r\nrcon_password \"CHANGE_ME\"\r\n", false, 2,
         {"remote-console password is still the placeholder CHANGE_ME", "tournament's password"}},
        // de_dust2 comes with the game; de_y is neither shipped nor the game's.
        {"mapcycle.txt", "de_dust2\r\nde_x\r\nde_y\r\n", false, 3,
         {"the map de_y", "maps/de_y.bsp", "add the map or correct the name"}},
        {"maps/empty.bsp", "", false, 0, {"holds 0 bytes"}},
        // Text records: CR LF line ends, no zero byte; a fault at a file's first or last byte too.
        {"autobuy.txt", "m4a1\r\nak47\nvest\n", true, 2, {"lone LF (and 1 more)", "save the file with CR LF line ends"}},
        {"cfg/first.cfg", "\nbind w +forward\r\n", true, 1, {"lone LF", "CR LF"}},
        {"cfg/user.scr", "a\rb\r\n", true, 1, {"lone CR", "CR LF"}},
        {"cfg/last.cfg", "a\r\nb\r", true, 2, {"lone CR", "CR LF"}},
        // A stray zero byte in plain text is not UTF-16.
        {"resource/UI/Buy.RES", std::string("a\r\nb\0c\r\n", 8), true, 2, {"zero byte", "not UTF-16"}},
        // UTF-16 in all four forms: one error, not one per lone CR, lone LF and zero byte, nor a
        // tile or map read from the garbled words.
        {"resource/BackgroundLayout.txt", Utf16(layoutWithT2, false, true), true, 0, {utf16}},
        {"cfg/valve.rc", Utf16("exec ludax/binds\r\n", true, true), true, 0, {utf16}},
        {"mapcycle.txt", Utf16("de_dust2\r\nde_y\r\n", false, false), true, 0, {utf16}},
        {"cfg/ludax/live.cfg", Utf16("mp_freezetime 10\r\n", true, false), true, 0, {utf16}},
        // Mostly Cyrillic: the mark alone tells.
        {"motd.txt", Utf16("Удачи на турнире!\r\n", false, true), true, 0, {utf16}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Set set(SoundFilesWith(c.name, c.bytes));
        ExpectOnly(CheckSet(set.folder, set.manifest), c.error, c.line ? set.At(c.name, c.line) : set.folder + "/" + c.name,
                   c.mentions);
    }
    // Other scripts may exec the player's own files: only the two start-up scripts are held to the set.
    Set own(SoundFilesWith("cfg/ludax/combo.cfg", "exec mine.cfg\r\n"));
    EXPECT_EQ(All(CheckSet(own.folder, own.manifest)), "");
}
