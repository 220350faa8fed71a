// Install and uninstall through the buttons, as a player does it, in every kind of place Steam
// has put the games: an account's own folder (until 2013) and a library's shared
// steamapps/common (since), in the Steam folder, in a second library and in one more than 300
// characters deep; all named in Russian and Hungarian. The locale runs (CMakeLists.txt) repeat
// these under a Hungarian and a Russian system code page.

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdlib>

#include "ludax_session.h"
#include "player_pc.h"
#include "text.h"

namespace {

struct Row {
    const char* name;
    int place;  // its entry in the chooser
    const Game* game;
    const char* content;  // where the game's files go, below the place's folder
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

const Row rows[] = {
    {"AccountFolderCounterStrike", 0, &cs16, "/counter-strike/cstrike/"},
    {"AccountFolderCounterStrikeSource", 0, &css, "/counter-strike source/cstrike/"},
    {"SteamFolderLibraryCounterStrike", 1, &cs16, "/steamapps/common/Half-Life/cstrike/"},
    {"SecondLibraryCounterStrikeSource", 2, &css, "/steamapps/common/Counter-Strike Source/cstrike/custom/ludax/"},
    {"LibraryPast300CharactersCounterStrike", 3, &cs16, "/steamapps/common/Half-Life/cstrike/"},
};

// A Steam folder "Стим" ("Steam") with an account "Игрок" ("Player") that has both games, and
// Counter-Strike in its own steamapps/common; a library "Játékok" ("Games") with
// Counter-Strike: Source and another add-on of the player's, named in
// steamapps/libraryfolders.vdf, and one past 300 characters with Counter-Strike, named only in
// config/libraryfolders.vdf.
class InstallUninstall : public testing::TestWithParam<Row> {
protected:
    void SetUp() override
    {
        const std::string steam = root.Path() + "/Стим";
        places = {steam + "/steamapps/Игрок", steam, root.Path() + "/Játékok/SteamLibrary", root.Path()};
        for (const char* level : {"/Сохранённые игры_", "/Régi játékok és mentések_", "/Steam-könyvtár_"})
            places[3] += level + std::string(80, 'x');
        ASSERT_GT(places[3].size(), 300u);
        for (const Row& row : rows) {
            // A file the install overwrites, and one of the player's own beside it.
            const std::string content = places[row.place] + row.content;
            WriteFile(content + (row.game == &cs16 ? "config.cfg" : "cfg/valve.rc"), "// the player's\r\nexec autoexec.cfg\r\n");
            WriteFile(content + (row.game == &cs16 ? "maps/de_own.bsp" : "cfg/own.cfg"), std::string("\0\1player\xFF", 9));
        }
        WriteFile(places[2] + "/steamapps/common/Counter-Strike Source/cstrike/custom/myhud/resource/hud.res", "hud");
        // The Steam folder listed again in Windows spelling, as Steam lists it.
        WriteFile(steam + "/steamapps/libraryfolders.vdf", LibraryList({steam, places[2]}));
        WriteFile(steam + "/config/libraryfolders.vdf", LibraryList({places[3]}));
        SteamFolder::SetSteamPath(steam);
    }

    // Expects every place in the chooser and picks the row's.
    void Choose(const LudaxSession& ludax) const
    {
        HWND chooser = ludax.controls.chooser;
        EXPECT_EQ(ChooserEntries(chooser), (std::vector<std::string>{"Игрок", "Steam library: " + places[1],
                                                                     "Steam library: " + AsSteamWritesIt(places[2]),
                                                                     "Steam library: " + AsSteamWritesIt(places[3])}));
        EXPECT_TRUE(IsWindowEnabled(chooser));
        ChooseEntry(chooser, GetParam().place);
        EXPECT_EQ(ChooserSelection(chooser), GetParam().place);
    }

    TempFolder root;
    std::vector<std::string> places;  // in the chooser's order
};

// The buttons each place enables before an install.
const EnabledButtons enabledAtFirst[] = {
    {true, false, true, false}, {true, false, false, false}, {false, false, true, false}, {true, false, false, false}};

}  // namespace

TEST_P(InstallUninstall, FirstInstallReinstallRestartAndUninstallLeaveEveryPlaceAsItWas)
{
    const Game& game = *GetParam().game;
    const std::string content = places[GetParam().place] + GetParam().content;
    const std::vector<std::string> records = ManifestNames(game.payload);
    ASSERT_FALSE(records.empty()) << "payload manifest not readable";
    const auto before = Snapshot(root.Path());
    EnabledButtons enabled = enabledAtFirst[GetParam().place];
    {
        SCOPED_TRACE("first install, then the reinstall question answered No and Yes");
        LudaxSession ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        Choose(ludax);
        EXPECT_EQ(ludax.Enabled(), enabled);
        bool offered = false;
        EXPECT_EQ(ludax.Click(game.install, IDOK, [&] { offered = ludax.Enabled()[game.uninstall]; }),
                  Message(game.installed, ludax.window));
        EXPECT_TRUE(offered) << "the uninstall was not offered when the success message came";
        enabled[game.uninstall] = true;
        EXPECT_EQ(ludax.Enabled(), enabled);
        for (const std::string& name : records)
            EXPECT_EQ(ReadFile(content + name), PayloadBytes(game.payload, name)) << name;

        WriteFile(content + records.front(), "changed by the player");
        EXPECT_EQ(ludax.Click(game.install, IDNO), Question(game.question, ludax.window));
        EXPECT_EQ(WaitForMessageBox(ludax.process, 1000), nullptr) << "a message followed the No";
        EXPECT_EQ(ReadFile(content + records.front()), "changed by the player");
        EXPECT_EQ(ludax.Click(game.install, IDYES), Question(game.question, ludax.window));
        EXPECT_EQ(ludax.Answer(IDOK), Message(game.installed, ludax.window));
        EXPECT_EQ(ReadFile(content + records.front()), PayloadBytes(game.payload, records.front()));
        ludax.Close();
    }
    {
        SCOPED_TRACE("a new start, then the uninstall");
        LudaxSession ludax;
        ASSERT_NE(ludax.window, nullptr) << ludax.failure;
        Choose(ludax);
        EXPECT_EQ(ludax.Enabled(), enabled) << "the install did not survive a restart";
        bool offered = true;
        EXPECT_EQ(ludax.Click(game.uninstall, IDOK, [&] { offered = ludax.Enabled()[game.uninstall]; }),
                  Message(game.uninstalled, ludax.window));
        EXPECT_FALSE(offered) << "the uninstall was still offered when its message came";
        enabled[game.uninstall] = false;
        EXPECT_EQ(ludax.Enabled(), enabled);
        ludax.Close();
    }
    EXPECT_EQ(Snapshot(root.Path()), before) << "the places are not as they were before the install";
}

INSTANTIATE_TEST_SUITE_P(EveryKindOfPlace, InstallUninstall, testing::ValuesIn(rows),
                         [](const testing::TestParamInfo<Row>& info) { return info.param.name; });

// A removal list an earlier version wrote in the system's ANSI code page: the uninstall still
// finds what it names.
TEST(Unicode, ARemovalListAnEarlierVersionWroteInTheAnsiCodePageStillUninstalls)
{
    // The locale runs ask for a code page: the program runs in it.
    if (const char* codePage = std::getenv("LUDAX_EXPECTED_CODE_PAGE")) {
        EXPECT_EQ(GetACP(), static_cast<UINT>(std::atoi(codePage)));
    }
    // A name the code page can hold, and its bytes there.
    std::string name;
    char ansi[64] = {};
    for (const char* candidate : {"játék_ő", "игра", "café"}) {
        BOOL lossy = FALSE;
        if (WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, Widen(candidate).c_str(), -1, ansi, sizeof ansi, nullptr,
                                &lossy) > 1 && !lossy) {
            name = candidate;
            break;
        }
    }
    ASSERT_FALSE(name.empty()) << "no name the ANSI code page can hold";
    SteamFolder steam;
    steam.AddAccount("player", cs16Game);
    const std::string account = steam.Account("player"), content = account + "/counter-strike/cstrike/";
    const auto before = Snapshot(account);
    // What an earlier version's install made, and the lists it wrote.
    WriteFile(content + "cfg/" + name + "/ludax.cfg", "made by the install");
    WriteFile(account + "/cs16ludax.bak", archiveHeader);
    WriteFile(account + "/cs16ludax_1.bak", content + "cfg/" + ansi + "/ludax.cfg\r\n" + content + "cfg/" + ansi +
                                                "\r\n" + content + "cfg\r\n");
    steam.Register();

    LudaxSession ludax;
    ASSERT_NE(ludax.window, nullptr) << ludax.failure;
    EXPECT_EQ(ludax.Click(cs16Uninstall).text, cs16.uninstalled);
    ludax.Close();
    EXPECT_EQ(Snapshot(account), before);
}
