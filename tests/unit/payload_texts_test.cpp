// Checks the shipped text records of both payload file sets: the installer
// writes them byte for byte, so whatever is wrong here ends up in the game.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

const std::string kCs16 = "cs16";
const std::string kCss = "css";
const std::string kPlainTile = "resource/background/ludax_logo_black_swap_part1x1.tga";
const std::string kTilePrefix = "resource/background/ludax_logo_black_swap_part";
const int kTileSize = 256;

std::string PayloadPath(const std::string& relative)
{
    return std::string(LUDAX_SOURCE_DIR) + "/payload/" + relative;
}

// Reads a whole file as raw bytes; false when it cannot be opened.
bool ReadBytes(const std::string& path, std::string& bytes)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return true;
}

std::string RecordBytes(const std::string& game, const std::string& record)
{
    std::string bytes;
    EXPECT_TRUE(ReadBytes(PayloadPath(game + "/" + record), bytes)) << game << "/" << record;
    return bytes;
}

std::string Lower(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// The manifest is the packing order: one record path per LF-terminated line.
std::vector<std::string> ReadManifest(const std::string& game)
{
    std::string bytes;
    EXPECT_TRUE(ReadBytes(PayloadPath(game + ".manifest"), bytes)) << game;
    std::vector<std::string> lines;
    std::string line;
    for (char c : bytes) {
        if (c == '\n') {
            lines.push_back(line);
            line.clear();
        } else {
            line += c;
        }
    }
    EXPECT_TRUE(line.empty()) << game << ".manifest does not end with a newline";
    return lines;
}

bool Contains(const std::vector<std::string>& list, const std::string& item)
{
    return std::find(list.begin(), list.end(), item) != list.end();
}

bool IsTextRecord(const std::string& record)
{
    static const char* const kTextEndings[] = {".cfg", ".txt", ".scr", ".lst", ".res", ".htm", ".rc", ".gam"};
    const std::string name = Lower(record);
    for (const char* ending : kTextEndings) {
        const std::string e(ending);
        if (name.size() > e.size() && name.compare(name.size() - e.size(), e.size(), e) == 0)
            return true;
    }
    return false;
}

// Splits CR LF text into lines (the last, empty piece after the final CR LF is dropped).
std::vector<std::string> CrLfLines(const std::string& text)
{
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", start)) {
        lines.push_back(text.substr(start, at - start));
        start = at + 2;
    }
    if (start < text.size())
        lines.push_back(text.substr(start));
    return lines;
}

// Console line parsing as the engines do it: "//" starts a comment outside
// quotes, ';' separates commands outside quotes, a quote left open runs to
// the end of the line.
using Command = std::vector<std::string>;

std::vector<Command> ParseLine(const std::string& line)
{
    std::vector<Command> commands(1);
    std::string token;
    bool inToken = false;
    bool quoted = false;
    auto endToken = [&]() {
        if (inToken)
            commands.back().push_back(token);
        token.clear();
        inToken = false;
    };
    for (size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quoted) {
            if (c == '"') {
                quoted = false;
                endToken();
            } else {
                token += c;
            }
        } else if (c == '"') {
            endToken();
            quoted = true;
            inToken = true;
        } else if (c == '/' && i + 1 < line.size() && line[i + 1] == '/') {
            break;
        } else if (c == ';') {
            endToken();
            commands.emplace_back();
        } else if (std::isspace(static_cast<unsigned char>(c))) {
            endToken();
        } else {
            token += c;
            inToken = true;
        }
    }
    endToken();
    commands.erase(std::remove_if(commands.begin(), commands.end(), [](const Command& c) { return c.empty(); }),
                   commands.end());
    return commands;
}

std::vector<Command> ParseScript(const std::string& text)
{
    std::vector<Command> all;
    for (const std::string& line : CrLfLines(text)) {
        std::vector<Command> commands = ParseLine(line);
        all.insert(all.end(), commands.begin(), commands.end());
    }
    return all;
}

// alias name -> body of every alias command of a script.
std::map<std::string, std::string> Aliases(const std::vector<Command>& commands)
{
    std::map<std::string, std::string> aliases;
    for (const Command& c : commands)
        if (c.size() == 3 && Lower(c[0]) == "alias")
            aliases[c[1]] = c[2];
    return aliases;
}

bool ParseInt(const std::string& text, int& value)
{
    if (text.empty() || !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    value = std::stoi(text);
    return true;
}

std::vector<std::string> SplitTabs(const std::string& line)
{
    std::vector<std::string> fields;
    std::string field;
    std::istringstream in(line);
    while (std::getline(in, field, '\t'))
        fields.push_back(field);
    return fields;
}

// What a remote-console script sends: cvar -> last value, and the restart delays in order.
struct RconScript {
    std::map<std::string, std::string> values;
    std::vector<std::string> restarts;
    bool waitsBetweenRestarts = true;
    int announcements = 0;
};

RconScript ReadRconScript(const std::string& text)
{
    RconScript script;
    bool waitedSinceRestart = true;
    for (const Command& c : ParseScript(text)) {
        if (Lower(c[0]) == "wait") {
            waitedSinceRestart = true;
            continue;
        }
        if (Lower(c[0]) != "rcon" || c.size() < 2)
            continue;
        if (c[1] == "say") {
            ++script.announcements;
        } else if (c[1] == "sv_restart" && c.size() == 3) {
            if (!waitedSinceRestart)
                script.waitsBetweenRestarts = false;
            script.restarts.push_back(c[2]);
            waitedSinceRestart = false;
        } else if (c.size() == 3) {
            script.values[c[1]] = c[2];
        }
    }
    return script;
}

}  // namespace

TEST(PayloadManifests, ListEveryRecordOnceUnderSafeNames)
{
    const std::map<std::string, size_t> expectedCounts = {{kCs16, 36u}, {kCss, 18u}};
    for (const auto& [game, count] : expectedCounts) {
        const std::vector<std::string> records = ReadManifest(game);
        EXPECT_EQ(records.size(), count) << game;
        std::set<std::string> exact;
        std::set<std::string> folded;  // Windows folders ignore case: two such names would collide
        for (const std::string& record : records) {
            EXPECT_FALSE(record.empty()) << game << ": blank line";
            EXPECT_EQ(record.find_first_of("\r\\"), std::string::npos) << game << ": " << record;
            EXPECT_NE(record.front(), '/') << game << ": " << record;
            EXPECT_EQ(record.find(".."), std::string::npos) << game << ": " << record;
            EXPECT_TRUE(exact.insert(record).second) << game << ": duplicate " << record;
            EXPECT_TRUE(folded.insert(Lower(record)).second) << game << ": case-only duplicate " << record;
        }
    }
}

TEST(PayloadTexts, TextRecordsUseCrLfAndPlainAscii)
{
    for (const std::string& game : {kCs16, kCss}) {
        size_t checked = 0;
        for (const std::string& record : ReadManifest(game)) {
            if (!IsTextRecord(record))
                continue;
            ++checked;
            const std::string bytes = RecordBytes(game, record);
            ASSERT_FALSE(bytes.empty()) << game << "/" << record;
            for (size_t i = 0; i < bytes.size(); ++i) {
                const unsigned char c = static_cast<unsigned char>(bytes[i]);
                const bool bareLf = c == '\n' && (i == 0 || bytes[i - 1] != '\r');
                const bool bareCr = c == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n');
                ASSERT_FALSE(bareLf || bareCr) << game << "/" << record << ": lone line-end byte at " << i;
                ASSERT_TRUE(c < 0x80 && c != 0) << game << "/" << record << ": byte " << int(c) << " at " << i;
            }
            EXPECT_EQ(bytes.compare(bytes.size() - 2, 2, "\r\n"), 0) << game << "/" << record << ": no final CR LF";
        }
        EXPECT_GT(checked, 0u) << game;
    }
}

TEST(PayloadTexts, PairedRecordsAreByteIdentical)
{
    const std::string layout = RecordBytes(kCs16, "resource/BackgroundLayout.txt");
    EXPECT_FALSE(layout.empty());
    EXPECT_EQ(layout, RecordBytes(kCs16, "resource/BackgroundLoadingLayout.txt"));

    const std::string warmup = RecordBytes(kCs16, "warmup.cfg");
    EXPECT_FALSE(warmup.empty());
    EXPECT_EQ(warmup, RecordBytes(kCss, "cfg/ludax/warmup.cfg"));
}

TEST(PayloadTexts, BackgroundLayoutPlacesEveryShippedTileInItsCell)
{
    const std::vector<std::string> records = ReadManifest(kCs16);
    const std::vector<std::string> lines = CrLfLines(RecordBytes(kCs16, "resource/BackgroundLayout.txt"));
    ASSERT_FALSE(lines.empty());

    const std::vector<std::string> head = SplitTabs(lines[0]);
    int width = 0;
    int height = 0;
    ASSERT_EQ(head.size(), 3u) << lines[0];
    EXPECT_EQ(head[0], "resolution");
    ASSERT_TRUE(ParseInt(head[1], width) && ParseInt(head[2], height)) << lines[0];
    EXPECT_EQ(width, 1280);
    EXPECT_EQ(height, 1024);
    const int columns = width / kTileSize;
    const int rows = height / kTileSize;
    ASSERT_EQ(lines.size(), static_cast<size_t>(1 + rows * columns));

    std::set<std::string> used;
    for (int index = 0; index < rows * columns; ++index) {
        const std::string& line = lines[1 + index];
        const std::vector<std::string> fields = SplitTabs(line);
        ASSERT_EQ(fields.size(), 4u) << line;
        int x = -1;
        int y = -1;
        EXPECT_EQ(fields[1], "scaled") << line;
        ASSERT_TRUE(ParseInt(fields[2], x) && ParseInt(fields[3], y)) << line;

        // Lines run row by row, left to right.
        const int row = index / columns + 1;
        const int column = index % columns + 1;
        EXPECT_EQ(x, (column - 1) * kTileSize) << line;
        EXPECT_EQ(y, (row - 1) * kTileSize) << line;

        const std::string ownTile = kTilePrefix + std::to_string(row) + "x" + std::to_string(column) + ".tga";
        const std::string expected = Contains(records, ownTile) ? ownTile : kPlainTile;
        EXPECT_EQ(fields[0], expected) << "row " << row << ", column " << column;
        EXPECT_TRUE(Contains(records, fields[0])) << fields[0];
        used.insert(fields[0]);
    }
    for (const std::string& record : records) {
        if (record.compare(0, kTilePrefix.size(), kTilePrefix) == 0) {
            EXPECT_EQ(used.count(record), 1u) << record << " is shipped but never shown";
        }
    }
}

TEST(PayloadScripts, ValveRcRunsTournamentScriptsAfterUserScripts)
{
    const std::vector<std::string> records = ReadManifest(kCss);
    std::vector<std::string> executed;
    for (const Command& c : ParseScript(RecordBytes(kCss, "cfg/valve.rc")))
        if (Lower(c[0]) == "exec" && c.size() == 2)
            executed.push_back(c[1]);

    const std::vector<std::string> order = {"joystick.cfg", "autoexec.cfg", "ludax\\combo.cfg",
                                            "ludax\\rconpassword.cfg", "ludax\\binds.cfg"};
    std::vector<size_t> positions;
    for (const std::string& script : order) {
        const auto at = std::find(executed.begin(), executed.end(), script);
        ASSERT_NE(at, executed.end()) << script << " is not executed";
        positions.push_back(static_cast<size_t>(at - executed.begin()));
    }
    EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end())) << "scripts run out of order";
    EXPECT_EQ(std::set<size_t>(positions.begin(), positions.end()).size(), positions.size());

    // The tournament scripts must be ones this payload ships.
    for (const std::string& script : executed) {
        if (Lower(script).compare(0, 6, "ludax\\") != 0)
            continue;
        std::string record = "cfg/" + script;
        std::replace(record.begin(), record.end(), '\\', '/');
        EXPECT_TRUE(Contains(records, record)) << script;
    }
}

TEST(PayloadScripts, AdminAliasesReachMapsAndServerScripts)
{
    const std::vector<std::string> records = ReadManifest(kCss);
    const std::string text = RecordBytes(kCss, "cfg/ludax/binds.cfg");
    const std::vector<Command> commands = ParseScript(text);
    const std::map<std::string, std::string> aliases = Aliases(commands);

    const std::map<std::string, std::string> mapAliases = {
        {"d2", "de_dust2"}, {"train", "de_train"}, {"inferno", "de_inferno"}, {"mill", "de_cpl_mill"}, {"nuke", "de_nuke"}};
    for (const auto& [alias, map] : mapAliases) {
        ASSERT_EQ(aliases.count(alias), 1u) << alias;
        EXPECT_EQ(ParseLine(aliases.at(alias)).front(), (Command{"rcon", "changelevel", map})) << alias;
    }
    EXPECT_TRUE(Contains(records, "maps/de_cpl_mill.bsp"));

    const std::map<std::string, std::string> scriptAliases = {{"lo3", "ludax/live"}, {"pregame", "ludax/warmup"}};
    for (const auto& [alias, script] : scriptAliases) {
        ASSERT_EQ(aliases.count(alias), 1u) << alias;
        EXPECT_EQ(ParseLine(aliases.at(alias)).front(), (Command{"rcon", "exec", script})) << alias;
        EXPECT_TRUE(Contains(records, "cfg/" + script + ".cfg")) << script;
    }
    EXPECT_TRUE(std::any_of(commands.begin(), commands.end(), [](const Command& c) { return Lower(c[0]) == "echo"; }))
        << "no load message";

    // Kept as shipped: exactly one alias line lacks its closing quote.
    int openQuotes = 0;
    for (const std::string& line : CrLfLines(text))
        if (line.compare(0, 6, "alias ") == 0 && std::count(line.begin(), line.end(), '"') % 2 != 0)
            ++openQuotes;
    EXPECT_EQ(openQuotes, 1);
}

TEST(PayloadScripts, MatchScriptsSendTheRulesAndRestarts)
{
    const std::map<std::string, std::string> liveRules = {{"mp_freezetime", "10"}, {"mp_roundtime", "1.75"},
        {"mp_c4timer", "35"}, {"mp_friendlyfire", "1"}, {"mp_startmoney", "800"}};
    const std::map<std::string, std::string> warmupRules = {{"mp_freezetime", "0"}, {"mp_startmoney", "16000"},
        {"mp_roundtime", "1.75"}, {"mp_c4timer", "35"}, {"mp_friendlyfire", "0"}};

    struct Case {
        std::string game, record;
        const std::map<std::string, std::string>& rules;
        std::vector<std::string> restarts;
    };
    const std::vector<Case> cases = {
        {kCs16, "live.cfg", liveRules, {"1", "1", "3"}},
        {kCss, "cfg/ludax/live.cfg", liveRules, {"1", "1", "3"}},
        {kCs16, "warmup.cfg", warmupRules, {"1"}},
    };
    for (const Case& c : cases) {
        const RconScript script = ReadRconScript(RecordBytes(c.game, c.record));
        for (const auto& [cvar, value] : c.rules) {
            const auto sent = script.values.find(cvar);
            ASSERT_NE(sent, script.values.end()) << c.record << " never sends " << cvar;
            EXPECT_EQ(sent->second, value) << c.record << ": " << cvar;
        }
        EXPECT_EQ(script.restarts, c.restarts) << c.game << "/" << c.record;
        EXPECT_TRUE(script.waitsBetweenRestarts) << c.game << "/" << c.record;
        EXPECT_GT(script.announcements, 0) << c.game << "/" << c.record;
    }
}

TEST(PayloadScripts, SettingsLockPinsEachVariableBeforeBlockingIt)
{
    const std::vector<Command> commands = ParseScript(RecordBytes(kCs16, "ludax.cfg"));
    std::map<std::string, size_t> pinnedAt;
    std::map<std::string, size_t> blockedAt;
    bool warnsAboutScreenshots = false;
    for (size_t i = 0; i < commands.size(); ++i) {
        const Command& c = commands[i];
        const std::string verb = Lower(c[0]);
        if (verb == "alias" && c.size() == 3 && c[2] == "-BLOCKED")
            blockedAt.emplace(c[1], i);
        else if (verb == "echo")
            warnsAboutScreenshots = warnsAboutScreenshots || Lower(c.back()).find("screenshot") != std::string::npos;
        else if (verb != "alias" && c.size() == 2)
            pinnedAt.emplace(c[0], i);
    }
    for (const char* name : {"gl_monolights", "gl_overbright", "gl_clear", "gamma", "cl_nosmooth"})
        EXPECT_EQ(blockedAt.count(name), 1u) << name << " is not blocked";
    for (const auto& [name, at] : blockedAt) {
        const auto pin = pinnedAt.find(name);
        ASSERT_NE(pin, pinnedAt.end()) << name << " is blocked without a fixed value";
        EXPECT_LT(pin->second, at) << name << " is pinned after its alias hides it";
    }
    for (const auto& [name, at] : pinnedAt)
        EXPECT_EQ(blockedAt.count(name), 1u) << name << " is pinned but stays changeable";
    EXPECT_TRUE(warnsAboutScreenshots);
}

TEST(PayloadScripts, MainConfigsClearBindingsAndTagThePlayer)
{
    const std::vector<std::string> cs16Records = ReadManifest(kCs16);
    const std::vector<Command> cs16 = ParseScript(RecordBytes(kCs16, "config.cfg"));
    ASSERT_FALSE(cs16.empty());
    EXPECT_EQ(cs16.front(), Command{"unbindall"});
    ASSERT_EQ(cs16.back().size(), 2u);
    EXPECT_EQ(cs16.back()[0], "exec");
    EXPECT_EQ(cs16.back()[1], "userconfig.cfg");
    EXPECT_TRUE(Contains(cs16Records, cs16.back()[1]));

    const std::vector<Command> css = ParseScript(RecordBytes(kCss, "cfg/LUDAX_config.cfg"));
    ASSERT_FALSE(css.empty());
    EXPECT_EQ(Lower(css.front()[0]), "unbindall");

    for (const std::vector<Command>* config : {&cs16, &css}) {
        std::map<std::string, std::string> binds;
        std::string name;
        for (const Command& c : *config) {
            if (Lower(c[0]) == "bind" && c.size() == 3)
                binds[Lower(c[1])] = c[2];
            else if (c[0] == "name" && c.size() == 2)
                name = c[1];
        }
        EXPECT_EQ(binds["mouse1"], "+attack");
        EXPECT_EQ(binds["w"], "+forward");
        EXPECT_NE(Lower(name).find("ludax"), std::string::npos) << "name tag: " << name;
    }
}

TEST(PayloadTexts, TournamentIsNamedWhereTheRecordsCarryIt)
{
    const std::vector<std::pair<std::string, std::string>> naming = {
        {kCs16, "ludax.cfg"}, {kCs16, "commandmenu.txt"}, {kCs16, "config.cfg"}, {kCs16, "userconfig.cfg"},
        {kCs16, "warmup.cfg"}, {kCs16, "resource/BackgroundLayout.txt"},
        {kCs16, "resource/BackgroundLoadingLayout.txt"}, {kCss, "cfg/LUDAX_config.cfg"},
        {kCss, "cfg/LUDAX_FPS_Config.cfg"}, {kCss, "cfg/valve.rc"}, {kCss, "cfg/ludax/binds.cfg"},
        {kCss, "cfg/ludax/warmup.cfg"}, {kCss, "resource/ClientScheme.res"},
        {kCss, "resource/OptionsSubKeyBoardAdvancedDlg.res"}, {kCss, "resource/SourceScheme.res"},
        {kCss, "scripts/kb_act.lst"}};
    for (const auto& [game, record] : naming)
        EXPECT_NE(Lower(RecordBytes(game, record)).find("ludax"), std::string::npos) << game << "/" << record;

    for (const char* scheme : {"resource/ClientScheme.res", "resource/SourceScheme.res"})
        EXPECT_NE(RecordBytes(kCss, scheme).find("\"255 102 0"), std::string::npos) << scheme << " lacks the orange";

    // The dialog calls itself "Keyboard" although its file name says "KeyBoard"; the game matches either.
    const std::string dialog = RecordBytes(kCss, "resource/OptionsSubKeyBoardAdvancedDlg.res");
    EXPECT_NE(dialog.find("\"OptionsSubKeyboardAdvancedDlg\""), std::string::npos);
    EXPECT_EQ(dialog.find("OptionsSubKeyBoardAdvancedDlg"), std::string::npos);

    // First key-binding entry: a heading with the interface's name and a date.
    const std::vector<Command> actions = ParseScript(RecordBytes(kCss, "scripts/kb_act.lst"));
    ASSERT_FALSE(actions.empty());
    ASSERT_EQ(actions.front().size(), 2u);
    EXPECT_EQ(actions.front()[0], "blank");
    const std::string heading = actions.front()[1];
    EXPECT_NE(Lower(heading).find("ludax"), std::string::npos) << heading;
    const auto digits = std::count_if(heading.begin(), heading.end(), [](char c) { return c >= '0' && c <= '9'; });
    EXPECT_GE(digits, 6) << "no date in: " << heading;
}
